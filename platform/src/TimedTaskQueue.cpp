#include "platform/internal/TimedTaskQueue.hpp"

#include <algorithm>
#include <vector>

namespace platform::internal {

namespace {
thread_local const CurrentExecutorScope* innermostScope = nullptr;
}

bool TimedTaskQueue::push(std::chrono::milliseconds delay, Task task) {
    const auto deadline = SteadyClock::now() + std::max(delay, std::chrono::milliseconds::zero());
    {
        std::lock_guard lock(mutex_);
        if (closed_) return false;  // `task` dies after the lock is released
        tasks_.emplace(Key{deadline, nextSequence_++}, std::move(task));
    }
    // notify_all: with several pool workers waiting on different deadlines, the one that must
    // wake for an earlier deadline is not necessarily the one notify_one would pick.
    changed_.notify_all();
    return true;
}

Task TimedTaskQueue::takeFirstIfDue(SteadyClock::time_point now) {
    if (tasks_.empty() || tasks_.begin()->first.first > now) return {};
    auto node = tasks_.extract(tasks_.begin());
    return std::move(node.mapped());
}

Task TimedTaskQueue::tryTakeDue() {
    std::lock_guard lock(mutex_);
    return takeFirstIfDue(SteadyClock::now());
}

Task TimedTaskQueue::waitTake() {
    std::unique_lock lock(mutex_);
    for (;;) {
        if (interrupted_) {
            interrupted_ = false;
            return {};
        }
        if (Task task = takeFirstIfDue(SteadyClock::now())) return task;
        if (closed_) return {};
        if (tasks_.empty()) {
            changed_.wait(lock);
        } else {
            // A copy: the node holding the deadline may be erased while this thread waits.
            const auto deadline = tasks_.begin()->first.first;
            changed_.wait_until(lock, deadline);
        }
    }
}

void TimedTaskQueue::interrupt() {
    {
        std::lock_guard lock(mutex_);
        interrupted_ = true;
    }
    changed_.notify_all();
}

void TimedTaskQueue::close() {
    std::vector<Task> dropped;
    {
        std::lock_guard lock(mutex_);
        closed_ = true;
        const auto now = SteadyClock::now();
        for (auto it = tasks_.begin(); it != tasks_.end();) {
            if (it->first.first > now) {
                dropped.push_back(std::move(it->second));
                it = tasks_.erase(it);
            } else {
                ++it;
            }
        }
    }
    changed_.notify_all();
}

std::size_t TimedTaskQueue::size() const {
    std::lock_guard lock(mutex_);
    return tasks_.size();
}

CurrentExecutorScope::CurrentExecutorScope(const Executor* executor) : executor_(executor), outer_(innermostScope) {
    innermostScope = this;
}

CurrentExecutorScope::~CurrentExecutorScope() {
    innermostScope = outer_;
}

bool CurrentExecutorScope::isRunning(const Executor* executor) {
    for (auto* scope = innermostScope; scope != nullptr; scope = scope->outer_) {
        if (scope->executor_ == executor) return true;
    }
    return false;
}

}  // namespace platform::internal
