#pragma once
// The main queue: the one serial executor on which views, view models, elements and default
// API completions run.
//
// The library has no main loop of its own. A host thread drives a `MainQueue` by calling
// `run()` (until `stop()`) or `runUntilIdle()` from its own loop; a test installs a
// `ManualMainQueue` instead and drives it by hand.
//
// Usage:
//   platform::mainQueue().post([] { ... });             // from any thread
//   platform::mainQueue().postAfter(1000ms, [] { ... });

#include <chrono>
#include <cstddef>
#include <memory>

#include "platform/Executor.hpp"

namespace platform {

namespace internal {
class TimedTaskQueue;
}

// A run loop driven by one host thread. Delayed tasks are ordered by their deadline on the
// steady clock, and tasks with equal deadlines run in the order they were posted.
//
// Thread safety: `post`, `postAfter`, `stop` and `isCurrent` may be called from any thread.
// `run` and `runUntilIdle` are called by the one driving thread (nesting `runUntilIdle` inside a
// task is allowed). Tasks still pending when the queue is destroyed are dropped, not run.
// REQUIRES: `run()` has returned before the queue is destroyed.
class MainQueue final : public Executor {
public:
    MainQueue();
    ~MainQueue() override;
    MainQueue(const MainQueue&) = delete;
    MainQueue& operator=(const MainQueue&) = delete;

    void post(Task task) override;
    void postAfter(std::chrono::milliseconds delay, Task task) override;

    // True only on the driving thread while one of this queue's tasks is running.
    [[nodiscard]] bool isCurrent() const override;

    // Runs tasks as they come due until `stop()` is called; sleeps while nothing is due.
    // A `stop()` that arrives before `run()` makes the next `run()` return at once.
    void run();

    // Makes `run()` return after the task it is running, if any. Pending tasks are kept.
    void stop();

    // Runs every task that is due now, including ones posted meanwhile, then returns the
    // number of tasks run. Tasks whose deadline lies in the future stay queued.
    std::size_t runUntilIdle();

    [[nodiscard]] std::size_t pendingCount() const;

private:
    std::unique_ptr<internal::TimedTaskQueue> queue_;
};

// The process-wide main queue: a `MainQueue` until a host or a test installs another executor.
//
// REQUIRES: the reference is not kept across a `setMainQueue` call; code that captures the
// queue for later (for example "the main queue, captured on first use") takes
// `sharedMainQueue()`.
[[nodiscard]] Executor& mainQueue();
[[nodiscard]] std::shared_ptr<Executor> sharedMainQueue();

// Installs `queue` as the process-wide main queue; a null pointer restores a fresh default
// `MainQueue`. Meant for start-up and test set-up.
void setMainQueue(std::shared_ptr<Executor> queue);

}  // namespace platform
