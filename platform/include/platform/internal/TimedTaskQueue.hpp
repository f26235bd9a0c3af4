#pragma once
// The queue behind MainQueue, ThreadPool and SerialQueue: tasks keyed by steady-clock deadline
// and post sequence, with blocking and non-blocking takes.
//
// Thread safety: every member is safe to call from any thread. Tasks are never destroyed or
// run while the internal lock is held, so a task (or a task's destructor) may post again.

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <utility>

#include "platform/Executor.hpp"

namespace platform::internal {

class TimedTaskQueue {
public:
    using SteadyClock = std::chrono::steady_clock;

    // Queues `task` to be due after `delay` (negative counts as zero). Returns false, dropping
    // the task, once the queue is closed.
    bool push(std::chrono::milliseconds delay, Task task);

    // The first task due now, or an empty task.
    [[nodiscard]] Task tryTakeDue();

    // Blocks until a task is due and returns it. Returns an empty task when `interrupt()` was
    // called (consuming that request) or when the queue is closed and nothing due is left.
    [[nodiscard]] Task waitTake();

    // Makes one current or future `waitTake` return empty.
    void interrupt();

    // Refuses further pushes, drops tasks not yet due, and wakes every waiter. Due tasks can
    // still be taken.
    void close();

    [[nodiscard]] std::size_t size() const;

private:
    using Key = std::pair<SteadyClock::time_point, std::uint64_t>;

    // REQUIRES: mutex_ held.
    Task takeFirstIfDue(SteadyClock::time_point now);

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::map<Key, Task> tasks_;
    std::uint64_t nextSequence_ = 0;
    bool interrupted_ = false;
    bool closed_ = false;
};

// Marks the calling thread as running a task of `executor` for the scope's lifetime; scopes
// nest, so a task that drives another queue inline keeps both answers right.
class CurrentExecutorScope {
public:
    explicit CurrentExecutorScope(const Executor* executor);
    ~CurrentExecutorScope();
    CurrentExecutorScope(const CurrentExecutorScope&) = delete;
    CurrentExecutorScope& operator=(const CurrentExecutorScope&) = delete;

    [[nodiscard]] static bool isRunning(const Executor* executor);

private:
    const Executor* executor_;
    const CurrentExecutorScope* outer_;
};

}  // namespace platform::internal
