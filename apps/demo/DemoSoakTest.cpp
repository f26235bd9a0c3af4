// Two hundred tabs typing into the demo for half a minute (TOVI_SOAK_SECONDS overrides), then
// left to expire: every key is answered, and once the sessions are gone the process holds no
// more memory than after a short warm-up round of the same kind.

#include <gtest/gtest.h>

#include <httplib.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>
#include <vector>

#include "DemoServer.hpp"
#include "platform/testing/ResidentMemory.hpp"

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr int kSessions = 200;

constexpr int kClients = 4;

struct Round {
    std::atomic<long> keys{0};
    std::atomic<long> failures{0};
    std::atomic<long> slowestMs{0};
};

// Opens the sessions, types into them from a few clients for `length`, and waits for them to
// expire.
void typeFor(tovi::demo::DemoServer& server, Clock::duration length, Round& round) {
    std::vector<std::thread> clients;
    for (int c = 0; c < kClients; ++c) {
        clients.emplace_back([&, c] {
            httplib::Client http("127.0.0.1", server.port());
            http.set_keep_alive(true);
            std::vector<std::string> ids;
            for (int s = c; s < kSessions; s += kClients) {
                auto made = http.Get("/new?screen=cardFields");
                if (!made || made->status != 303) {
                    ++round.failures;
                    continue;
                }
                ids.push_back(made->get_header_value("Location").substr(3));
            }
            const auto end = Clock::now() + length;
            for (int key = 0; Clock::now() < end; ++key) {
                // Sixteen digits fill the field; the seventeenth key empties it again.
                const std::string body = key % 17 == 16 ? R"({"action":"delete","id":"cardNumber","times":19})"
                                                        : R"({"action":"type","id":"cardNumber","keys":"4"})";
                for (const std::string& id : ids) {
                    const auto sent = Clock::now();
                    auto answer = http.Post("/s/" + id + "/act", body, "application/json");
                    const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - sent).count();
                    if (!answer || answer->status != 200) ++round.failures;
                    ++round.keys;
                    for (long seen = round.slowestMs; ms > seen && !round.slowestMs.compare_exchange_weak(seen, ms);) {
                    }
                }
            }
        });
    }
    for (auto& client : clients) client.join();
    for (auto until = Clock::now() + 60s; server.sessionCount() > 0 && Clock::now() < until;) {
        std::this_thread::sleep_for(100ms);
    }
}

TEST(DemoSoak, TypingTabsAreAnsweredAndLeaveMemoryFlatOnceTheyExpire) {
    const char* configured = std::getenv("TOVI_SOAK_SECONDS");
    const auto length = std::chrono::seconds(configured != nullptr ? std::atoi(configured) : 30);
    auto server = tovi::demo::DemoServer::start(
        {.port = 0, .sessionTtl = 10s, .sweepInterval = 200ms, .maxSessions = 2 * kSessions, .threads = 16});
    ASSERT_TRUE(server) << server.error();

    Round warmUp;
    typeFor(**server, 3s, warmUp);
    const double afterWarmUp = platform::testing::residentMegabytes();
    Round soak;
    typeFor(**server, length, soak);
    const double afterSoak = platform::testing::residentMegabytes();

    std::printf(
        "soak: %ld keys in %lld s over %d sessions, %ld failed, slowest %ld ms; RSS %.1f MB after the "
        "warm-up, %.1f MB after the soak\n",
        soak.keys.load(), static_cast<long long>(length.count()), kSessions, soak.failures.load(),
        soak.slowestMs.load(), afterWarmUp, afterSoak);
    EXPECT_EQ(warmUp.failures + soak.failures, 0);
    EXPECT_EQ((*server)->sessionCount(), 0u) << "every session expired";
    if (platform::testing::kResidentSizeIsTheProgram) {
        EXPECT_LT(afterSoak - afterWarmUp, 20.0) << "memory once the sessions are gone";
    }
}

}  // namespace
