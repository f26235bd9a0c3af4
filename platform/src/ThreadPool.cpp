#include "platform/ThreadPool.hpp"

#include <pthread.h>

#include <algorithm>

#include "platform/internal/TimedTaskQueue.hpp"

namespace platform {

ThreadPool::ThreadPool(std::size_t threadCount, std::string name)
    : threadCount_(std::max<std::size_t>(threadCount, 1)), queue_(std::make_unique<internal::TimedTaskQueue>()) {
    name.resize(std::min<std::size_t>(name.size(), 15));  // the kernel's limit for thread names
    workers_.reserve(threadCount);
    for (std::size_t i = 0; i < threadCount_; ++i) {
        workers_.emplace_back([this] { work(); });
        (void)pthread_setname_np(workers_.back().native_handle(), name.c_str());
    }
}

ThreadPool::~ThreadPool() {
    shutdown();
}

void ThreadPool::post(Task task) {
    (void)queue_->push(std::chrono::milliseconds::zero(), std::move(task));
}

void ThreadPool::postAfter(std::chrono::milliseconds delay, Task task) {
    (void)queue_->push(delay, std::move(task));
}

bool ThreadPool::isCurrent() const {
    return internal::CurrentExecutorScope::isRunning(this);
}

void ThreadPool::shutdown() {
    std::lock_guard lock(shutdownMutex_);
    queue_->close();
    for (auto& worker : workers_) {
        if (worker.joinable()) worker.join();
    }
}

void ThreadPool::work() {
    while (Task task = queue_->waitTake()) {
        internal::CurrentExecutorScope scope(this);
        task();
    }
}

}  // namespace platform
