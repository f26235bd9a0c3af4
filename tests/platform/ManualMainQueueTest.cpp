#include "platform/testing/ManualMainQueue.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/MainQueue.hpp"

namespace {

using namespace std::chrono_literals;
using platform::ManualMainQueue;

TEST(ManualMainQueue, RunUntilIdleRunsDueTasksInPostOrderFollowUpsAfterAndNeitherDelaysNorMovesTime) {
    ManualMainQueue queue;
    std::vector<std::string> order;
    queue.post([&] {
        order.push_back("a");
        queue.post([&] { order.push_back("a-child"); });
    });
    queue.postAfter(0ms, [&] { order.push_back("b"); });
    queue.post([&] { order.push_back("c"); });
    queue.postAfter(1ms, [&] { order.push_back("later"); });

    EXPECT_EQ(queue.runUntilIdle(), 4u);
    EXPECT_EQ(order, (std::vector<std::string>{"a", "b", "c", "a-child"})) << "no delayed task";
    EXPECT_EQ(queue.now(), ManualMainQueue::kDefaultStart) << "time does not move";
    EXPECT_EQ(queue.pendingCount(), 1u);
}

TEST(ManualMainQueue, AdvanceRunsDelayedTasksInDeadlineOrderAtTheirOwnTime) {
    ManualMainQueue queue;
    const auto start = queue.now();
    std::vector<std::pair<int, std::chrono::milliseconds>> seen;  // task, virtual time when it ran
    auto record = [&](int id) {
        return [&, id] {
            seen.emplace_back(id, std::chrono::duration_cast<std::chrono::milliseconds>(queue.now() - start));
        };
    };
    queue.postAfter(300ms, record(3));
    queue.postAfter(100ms, record(1));
    queue.postAfter(200ms, record(2));
    queue.postAfter(100ms, record(11));  // same deadline as 1, posted later

    EXPECT_EQ(queue.advance(99ms), 0u);
    EXPECT_TRUE(seen.empty());
    EXPECT_EQ(queue.advance(1ms), 2u);
    EXPECT_EQ(queue.advance(500ms), 2u);

    using Seen = std::vector<std::pair<int, std::chrono::milliseconds>>;
    EXPECT_EQ(seen, (Seen{{1, 100ms}, {11, 100ms}, {2, 200ms}, {3, 300ms}}));
    EXPECT_EQ(queue.now(), start + 600ms);
}

TEST(ManualMainQueue, AdvanceIncludesTasksPostedDuringItThatFallInsideTheWindow) {
    ManualMainQueue queue;
    std::vector<std::string> order;
    queue.postAfter(100ms, [&] {
        order.push_back("first");
        queue.postAfter(50ms, [&] { order.push_back("inside"); });    // due at 150
        queue.postAfter(500ms, [&] { order.push_back("outside"); });  // due at 600
        queue.post([&] { order.push_back("now"); });                  // due at 100
    });
    queue.postAfter(120ms, [&] { order.push_back("second"); });

    EXPECT_EQ(queue.advance(200ms), 4u);
    EXPECT_EQ(order, (std::vector<std::string>{"first", "now", "second", "inside"}));
    EXPECT_EQ(queue.pendingCount(), 1u);
}

TEST(ManualMainQueue, IsCurrentOnlyWhileRunningOneOfItsTasks) {
    ManualMainQueue queue;
    ManualMainQueue other;
    bool inside = false;
    bool otherInside = true;
    queue.post([&] {
        inside = queue.isCurrent();
        otherInside = other.isCurrent();
    });
    EXPECT_FALSE(queue.isCurrent());
    queue.runUntilIdle();
    EXPECT_TRUE(inside);
    EXPECT_FALSE(otherInside);
    EXPECT_FALSE(queue.isCurrent());
}

TEST(ManualMainQueueScope, InstallsQueueAndClockThenRestoresThePreviousOnes) {
    auto& queueBefore = platform::mainQueue();
    auto& clockBefore = platform::clock();
    {
        platform::ManualMainQueueScope scope(ManualMainQueue::kDefaultStart + 24h);
        EXPECT_EQ(&platform::mainQueue(), &scope.queue());
        EXPECT_EQ(platform::clock().now(), ManualMainQueue::kDefaultStart + 24h);

        bool ran = false;
        platform::mainQueue().postAfter(1s, [&] { ran = true; });
        scope->advance(1s);
        EXPECT_TRUE(ran);
        EXPECT_EQ(platform::clock().now(), ManualMainQueue::kDefaultStart + 24h + 1s);
    }
    EXPECT_EQ(&platform::mainQueue(), &queueBefore);
    EXPECT_EQ(&platform::clock(), &clockBefore);
}

TEST(ManualMainQueueScope, DropsTasksThatNeverRanSoThatTheirCapturesAreFreed) {
    // An owner that keeps the queue alive and is kept alive by a task on it: without the drop,
    // neither is ever freed.
    struct Owner {
        std::shared_ptr<platform::Executor> queue;
    };
    std::weak_ptr<Owner> watched;
    bool destructorRepostRan = false;
    {
        platform::ManualMainQueueScope scope;
        auto owner = std::make_shared<Owner>(Owner{platform::sharedMainQueue()});
        watched = owner;
        // A capture whose destructor posts again must not leave a task behind either.
        auto repostOnDestroy = std::shared_ptr<void>(nullptr, [&destructorRepostRan](void*) {
            platform::mainQueue().post([&destructorRepostRan] { destructorRepostRan = true; });
        });
        platform::mainQueue().post([owner, repostOnDestroy] {});
        platform::mainQueue().postAfter(1h, [owner] {});
    }
    EXPECT_TRUE(watched.expired());
    EXPECT_FALSE(destructorRepostRan);
}

TEST(ProcessWideClock, NullRestoresTheSystemClock) {
    platform::setClock(std::make_shared<ManualMainQueue>());
    EXPECT_EQ(platform::clock().now(), ManualMainQueue::kDefaultStart);
    platform::setClock(nullptr);
    EXPECT_NE(dynamic_cast<platform::SystemClock*>(&platform::clock()), nullptr);
}

}  // namespace
