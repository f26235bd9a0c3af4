#include "platform/Console.hpp"
#include "platform/DeviceInfo.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <thread>

namespace {

TEST(Console, CaptureCollectsWholeLinesFromManyThreads) {
    platform::ConsoleCapture capture;
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([t] {
            for (int i = 0; i < 100; ++i) platform::consoleLine("thread " + std::to_string(t) + " line");
        });
    }
    for (auto& thread : threads) thread.join();
    const auto lines = capture.lines();
    ASSERT_EQ(lines.size(), 400u);
    for (const auto& line : lines) EXPECT_EQ(line.size(), std::string("thread 0 line").size()) << line;
}

TEST(Console, NestedCapturesRestoreTheOuterOne) {
    platform::ConsoleCapture outer;
    platform::consoleLine("a");
    {
        platform::ConsoleCapture inner;
        platform::consoleLine("b");
        EXPECT_EQ(inner.lines(), std::vector<std::string>{"b"});
    }
    platform::consoleLine("c");
    EXPECT_EQ(outer.lines(), (std::vector<std::string>{"a", "c"}));
}

class CachesDirectory : public ::testing::Test {
protected:
    void SetUp() override {
        if (const char* v = std::getenv("XDG_CACHE_HOME")) savedXdg_ = v;
        if (const char* v = std::getenv("HOME")) savedHome_ = v;
    }
    void TearDown() override {
        restore("XDG_CACHE_HOME", savedXdg_);
        restore("HOME", savedHome_);
        platform::setCachesDirectory({});
    }
    static void restore(const char* name, const std::optional<std::string>& value) {
        if (value)
            ::setenv(name, value->c_str(), 1);
        else
            ::unsetenv(name);
    }
    std::optional<std::string> savedXdg_, savedHome_;
};

TEST_F(CachesDirectory, FollowsXdgRulesUnlessTheHostSetsOne) {
    ::setenv("HOME", "/home/alice", 1);
    ::setenv("XDG_CACHE_HOME", "/var/cache/alice", 1);
    EXPECT_EQ(platform::cachesDirectory(), "/var/cache/alice");

    ::setenv("XDG_CACHE_HOME", "relative/cache", 1);  // relative values are invalid and ignored
    EXPECT_EQ(platform::cachesDirectory(), "/home/alice/.cache");

    ::unsetenv("XDG_CACHE_HOME");
    EXPECT_EQ(platform::cachesDirectory(), "/home/alice/.cache");

    ::setenv("XDG_CACHE_HOME", "/var/cache/alice", 1);
    platform::setCachesDirectory("/sandbox/caches");  // the host's choice wins until cleared
    EXPECT_EQ(platform::cachesDirectory(), "/sandbox/caches");
    platform::setCachesDirectory({});
    EXPECT_EQ(platform::cachesDirectory(), "/var/cache/alice");
}

}  // namespace
