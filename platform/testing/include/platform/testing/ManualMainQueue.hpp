#pragma once
// A main queue for tests: nothing runs until the test says so, and time is virtual.
//
// Usage:
//   platform::ManualMainQueueScope main;      // installed as main queue and clock
//   viewModel.fetch();                         // posts work
//   main->runUntilIdle();                      // runs what is due now
//   main->advance(1000ms);                     // moves time, running delayed tasks on the way

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

#include "platform/Clock.hpp"
#include "platform/Executor.hpp"

namespace platform {

// Thread safety: `post`, `postAfter`, `now`, `pendingCount` and `isCurrent` may be called from
// any thread (so that background work can complete onto it); `runUntilIdle`, `advance` and
// `setNow` are called by the test's thread.
class ManualMainQueue final : public Executor, public Clock {
public:
    // 2024-01-15 12:00:00 UTC: a fixed and unremarkable instant, so that dates derived from
    // "now" are the same in every run.
    static constexpr TimePoint kDefaultStart{std::chrono::seconds{1'705'320'000}};

    explicit ManualMainQueue(TimePoint start = kDefaultStart);
    ManualMainQueue(const ManualMainQueue&) = delete;
    ManualMainQueue& operator=(const ManualMainQueue&) = delete;

    void post(Task task) override;
    void postAfter(std::chrono::milliseconds delay, Task task) override;

    // True while this queue runs one of its tasks (on the thread that drives it).
    [[nodiscard]] bool isCurrent() const override;

    [[nodiscard]] TimePoint now() const override;

    // Moves virtual time to `time` without running anything. Deadlines already set keep their
    // absolute time.
    void setNow(TimePoint time);

    // Runs every task due at the current virtual time, including tasks posted while running,
    // without moving time. Returns the number of tasks run.
    std::size_t runUntilIdle();

    // Moves time forward by `duration`, stopping at each deadline on the way to run the tasks
    // due then (deadline order, post order for equal deadlines, tasks posted meanwhile
    // included). Ends with time exactly `duration` later. Returns the number of tasks run.
    std::size_t advance(std::chrono::milliseconds duration);

    [[nodiscard]] std::size_t pendingCount() const;

    // Drops every task without running it, tasks posted by the dropped ones' destructors too.
    void discardPending();

private:
    using Key = std::pair<TimePoint, std::uint64_t>;

    // Removes and returns the first task due at or before `limit`, moving time up to its
    // deadline; an empty task when none is due.
    Task takeDue(TimePoint limit);
    void runOne(Task task);

    mutable std::mutex mutex_;
    TimePoint now_;
    std::uint64_t nextSequence_ = 0;
    std::map<Key, Task> tasks_;
};

// Installs a fresh `ManualMainQueue` as both the process-wide main queue and clock for the
// lifetime of the scope, and restores the previous ones afterwards. Tasks never run are dropped
// with the scope: an object that holds the queue and is held by one of its tasks (a view model
// whose completion is still posted) would otherwise keep both alive.
class ManualMainQueueScope {
public:
    explicit ManualMainQueueScope(Clock::TimePoint start = ManualMainQueue::kDefaultStart);
    ~ManualMainQueueScope();
    ManualMainQueueScope(const ManualMainQueueScope&) = delete;
    ManualMainQueueScope& operator=(const ManualMainQueueScope&) = delete;

    [[nodiscard]] ManualMainQueue& queue() const { return *queue_; }
    ManualMainQueue* operator->() const { return queue_.get(); }

private:
    std::shared_ptr<ManualMainQueue> queue_;
    std::shared_ptr<Executor> previousQueue_;
    std::shared_ptr<Clock> previousClock_;
};

}  // namespace platform
