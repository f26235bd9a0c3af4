#include "platform/MainQueue.hpp"

#include "platform/internal/TimedTaskQueue.hpp"

namespace platform {

MainQueue::MainQueue() : queue_(std::make_unique<internal::TimedTaskQueue>()) {}

MainQueue::~MainQueue() = default;

void MainQueue::post(Task task) {
    (void)queue_->push(std::chrono::milliseconds::zero(), std::move(task));
}

void MainQueue::postAfter(std::chrono::milliseconds delay, Task task) {
    (void)queue_->push(delay, std::move(task));
}

bool MainQueue::isCurrent() const {
    return internal::CurrentExecutorScope::isRunning(this);
}

void MainQueue::run() {
    while (Task task = queue_->waitTake()) {
        internal::CurrentExecutorScope scope(this);
        task();
    }
}

void MainQueue::stop() {
    queue_->interrupt();
}

std::size_t MainQueue::runUntilIdle() {
    std::size_t count = 0;
    while (Task task = queue_->tryTakeDue()) {
        internal::CurrentExecutorScope scope(this);
        task();
        ++count;
    }
    return count;
}

std::size_t MainQueue::pendingCount() const {
    return queue_->size();
}

}  // namespace platform
