// The real executors, driven by real threads. Waits use futures and latches, never sleeps;
// these tests also run under ThreadSanitizer.

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <latch>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "platform/MainQueue.hpp"
#include "platform/SerialQueue.hpp"
#include "platform/ThreadPool.hpp"
#include "platform/testing/InlineExecutor.hpp"

namespace {

using namespace std::chrono_literals;

TEST(MainQueue, RunsPostedTasksOnTheDrivingThreadUntilStopped) {
    platform::MainQueue queue;
    std::thread driver([&] { queue.run(); });

    std::promise<std::pair<std::thread::id, bool>> ran;
    queue.post([&] { ran.set_value({std::this_thread::get_id(), queue.isCurrent()}); });
    const auto [threadId, wasCurrent] = ran.get_future().get();
    EXPECT_EQ(threadId, driver.get_id());
    EXPECT_TRUE(wasCurrent);
    EXPECT_FALSE(queue.isCurrent()) << "not current on a thread that isn't running its task";

    queue.stop();
    driver.join();
}

TEST(MainQueue, DelayedTasksRunByDeadlineThenPostOrder) {
    platform::MainQueue queue;
    std::vector<int> order;  // touched only by the driving thread
    queue.postAfter(30ms, [&] {
        order.push_back(3);
        queue.stop();
    });
    queue.postAfter(10ms, [&] { order.push_back(1); });
    queue.post([&] { order.push_back(0); });
    queue.postAfter(20ms, [&] { order.push_back(2); });
    std::thread driver([&] { queue.run(); });
    driver.join();
    EXPECT_EQ(order, (std::vector<int>{0, 1, 2, 3}));
}

TEST(MainQueue, StopBeforeRunMakesRunReturnAndKeepsPendingTasks) {
    platform::MainQueue queue;
    queue.post([] {});
    queue.stop();
    queue.run();  // would hang if the early stop were lost
    EXPECT_EQ(queue.pendingCount(), 1u);
    EXPECT_EQ(queue.runUntilIdle(), 1u);
}

TEST(MainQueue, RunUntilIdleRunsWhatIsDueIncludingFollowUpsButNotLaterTasks) {
    platform::MainQueue queue;
    int ran = 0;
    queue.post([&] {
        ++ran;
        queue.post([&] { ++ran; });
    });
    queue.postAfter(1h, [&] { ran += 100; });
    EXPECT_EQ(queue.runUntilIdle(), 2u);
    EXPECT_EQ(ran, 2);
    EXPECT_EQ(queue.pendingCount(), 1u);
}

TEST(InlineExecutor, RunsAtOnceAndIsCurrentOnlyInsideItsOwnTasks) {
    platform::InlineExecutor outer;
    platform::InlineExecutor inner;
    std::vector<std::string> seen;
    EXPECT_FALSE(outer.isCurrent());
    outer.postAfter(1h, [&] {
        seen.push_back(outer.isCurrent() ? "outer" : "-");
        inner.post([&] { seen.push_back(inner.isCurrent() && !outer.isCurrent() ? "inner" : "-"); });
        seen.push_back(outer.isCurrent() ? "outer again" : "-");
    });
    EXPECT_FALSE(outer.isCurrent());
    EXPECT_EQ(seen, (std::vector<std::string>{"outer", "inner", "outer again"}));

    std::thread other([&] { EXPECT_FALSE(outer.isCurrent()); });
    outer.post([&] { other.join(); });
}

TEST(ThreadPool, RunsTasksConcurrentlyOnItsOwnThreads) {
    platform::ThreadPool pool(2);
    const auto testThread = std::this_thread::get_id();
    // Both tasks must be running at the same time to pass the latch: proves two workers.
    std::latch bothStarted(2);
    std::promise<bool> first;
    std::promise<bool> second;
    auto task = [&, testThread](std::promise<bool>& done) {
        return [&] {
            bothStarted.arrive_and_wait();
            done.set_value(pool.isCurrent() && std::this_thread::get_id() != testThread);
        };
    };
    pool.post(task(first));
    pool.post(task(second));
    EXPECT_TRUE(first.get_future().get());
    EXPECT_TRUE(second.get_future().get());
    EXPECT_FALSE(pool.isCurrent());
}

TEST(ThreadPool, RunsEveryTaskPostedFromManyThreads) {
    platform::ThreadPool pool(3);
    constexpr int kPosters = 4;
    constexpr int kPerPoster = 250;
    std::latch done(kPosters * kPerPoster);
    std::atomic<int> count = 0;
    std::vector<std::jthread> posters;
    for (int p = 0; p < kPosters; ++p) {
        posters.emplace_back([&] {
            for (int i = 0; i < kPerPoster; ++i) {
                pool.post([&] {
                    ++count;
                    done.count_down();
                });
            }
        });
    }
    done.wait();
    EXPECT_EQ(count.load(), kPosters * kPerPoster);
}

TEST(ThreadPool, ShutdownFinishesDueTasksDropsLaterOnesAndRefusesNewOnes) {
    auto token = std::make_shared<int>(0);
    std::atomic<int> ran = 0;
    platform::ThreadPool pool(1);
    std::promise<void> release;
    auto gate = release.get_future().share();
    pool.post([gate] { gate.wait(); });  // holds the only worker so the next task stays queued
    pool.post([&] { ++ran; });
    pool.postAfter(1h, [&ran, token] { ran += 100; });

    std::thread stopper([&] { pool.shutdown(); });
    release.set_value();
    stopper.join();
    EXPECT_EQ(ran.load(), 1);

    pool.post([&ran, token] { ran += 1000; });
    pool.postAfter(1ms, [&ran, token] { ran += 1000; });
    EXPECT_EQ(ran.load(), 1);
    EXPECT_EQ(token.use_count(), 1) << "dropped tasks must be destroyed, not kept";
}

TEST(ThreadPool, BackgroundPoolHasTwoToFourWorkers) {
    auto& pool = platform::backgroundPool();
    EXPECT_GE(pool.threadCount(), 2u);
    EXPECT_LE(pool.threadCount(), 4u);
    std::promise<bool> onPool;
    pool.post([&] { onPool.set_value(platform::backgroundPool().isCurrent()); });
    EXPECT_TRUE(onPool.get_future().get());
}

TEST(SerialQueue, RunsTasksOneAtATimeInPostOrder) {
    platform::SerialQueue queue("session.delegate");
    EXPECT_EQ(queue.label(), "session.delegate");
    std::vector<int> order;  // unsynchronised on purpose: ThreadSanitizer flags any overlap
    std::promise<void> done;
    for (int i = 0; i < 200; ++i) queue.post([&order, i] { order.push_back(i); });
    queue.post([&] { done.set_value(); });
    done.get_future().wait();

    ASSERT_EQ(order.size(), 200u);
    for (int i = 0; i < 200; ++i) EXPECT_EQ(order[static_cast<std::size_t>(i)], i);
}

TEST(SerialQueue, CompletionsHopBackToTheMainQueue) {
    platform::MainQueue main;
    platform::SerialQueue queue("worker");
    std::promise<bool> mainSawIt;
    queue.post([&] {
        const bool onWorker = queue.isCurrent() && !main.isCurrent();
        main.post([&, onWorker] {
            mainSawIt.set_value(onWorker && main.isCurrent() && !queue.isCurrent());
            main.stop();
        });
    });
    main.run();
    EXPECT_TRUE(mainSawIt.get_future().get());
}

}  // namespace
