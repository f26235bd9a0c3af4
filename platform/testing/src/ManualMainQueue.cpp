#include "platform/testing/ManualMainQueue.hpp"

#include <algorithm>

#include "platform/MainQueue.hpp"
#include "platform/internal/TimedTaskQueue.hpp"

namespace platform {

ManualMainQueue::ManualMainQueue(TimePoint start) : now_(start) {}

void ManualMainQueue::post(Task task) {
    postAfter(std::chrono::milliseconds::zero(), std::move(task));
}

void ManualMainQueue::postAfter(std::chrono::milliseconds delay, Task task) {
    std::lock_guard lock(mutex_);
    const auto deadline = now_ + std::max(delay, std::chrono::milliseconds::zero());
    tasks_.emplace(Key{deadline, nextSequence_++}, std::move(task));
}

bool ManualMainQueue::isCurrent() const {
    return internal::CurrentExecutorScope::isRunning(this);
}

Clock::TimePoint ManualMainQueue::now() const {
    std::lock_guard lock(mutex_);
    return now_;
}

void ManualMainQueue::setNow(TimePoint time) {
    std::lock_guard lock(mutex_);
    now_ = time;
}

std::size_t ManualMainQueue::pendingCount() const {
    std::lock_guard lock(mutex_);
    return tasks_.size();
}

Task ManualMainQueue::takeDue(TimePoint limit) {
    std::lock_guard lock(mutex_);
    if (tasks_.empty() || tasks_.begin()->first.first > limit) return {};
    auto node = tasks_.extract(tasks_.begin());
    now_ = std::max(now_, node.key().first);
    return std::move(node.mapped());
}

void ManualMainQueue::runOne(Task task) {
    internal::CurrentExecutorScope scope(this);
    task();
}

std::size_t ManualMainQueue::runUntilIdle() {
    std::size_t count = 0;
    while (Task task = takeDue(now())) {
        runOne(std::move(task));
        ++count;
    }
    return count;
}

std::size_t ManualMainQueue::advance(std::chrono::milliseconds duration) {
    const TimePoint target = now() + std::max(duration, std::chrono::milliseconds::zero());
    std::size_t count = 0;
    while (Task task = takeDue(target)) {
        runOne(std::move(task));
        ++count;
    }
    setNow(std::max(now(), target));
    return count;
}

void ManualMainQueue::discardPending() {
    for (;;) {
        std::map<Key, Task> dropped;
        {
            std::lock_guard lock(mutex_);
            if (tasks_.empty()) return;
            dropped.swap(tasks_);
        }
        // Destroyed outside the lock: a capture's destructor may post again.
    }
}

ManualMainQueueScope::ManualMainQueueScope(Clock::TimePoint start)
    : queue_(std::make_shared<ManualMainQueue>(start)),
      previousQueue_(sharedMainQueue()),
      previousClock_(sharedClock()) {
    setMainQueue(queue_);
    setClock(queue_);
}

ManualMainQueueScope::~ManualMainQueueScope() {
    // Dropped while still installed, so that what a dropped task's destructor posts lands here
    // and is dropped too, rather than on the queue that comes back.
    queue_->discardPending();
    setClock(previousClock_);
    setMainQueue(previousQueue_);
}

}  // namespace platform
