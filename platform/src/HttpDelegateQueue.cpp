#include "HttpDelegateQueue.hpp"

#include <utility>

namespace platform::http_internal {

HttpDelegateQueue::HttpDelegateQueue() : thread_([this] { run(); }) {}

HttpDelegateQueue::~HttpDelegateQueue() {
    shutdown();
}

void HttpDelegateQueue::post(Task task) {
    bool wasEmpty = false;
    {
        std::unique_lock lock(mutex_);
        if (exited_) {
            // The worker is gone for good: run here rather than lose the task.
            lock.unlock();
            task();
            return;
        }
        wasEmpty = ready_.empty();
        ready_.push_back(std::move(task));
    }
    // A non-empty queue means the worker has been woken already and will drain it.
    if (wasEmpty) wake_.notify_one();
}

void HttpDelegateQueue::postAfter(std::chrono::milliseconds delay, Task task) {
    {
        std::lock_guard lock(mutex_);
        if (exited_) return;
        delayed_.emplace(std::chrono::steady_clock::now() + delay, std::move(task));
    }
    wake_.notify_one();
}

bool HttpDelegateQueue::isCurrent() const {
    return std::this_thread::get_id() == thread_.get_id();
}

void HttpDelegateQueue::shutdown() {
    {
        std::lock_guard lock(mutex_);
        if (exited_) return;
        stopping_ = true;
    }
    wake_.notify_one();
    if (thread_.joinable() && !isCurrent()) thread_.join();
}

void HttpDelegateQueue::run() {
    std::deque<Task> batch;
    std::unique_lock lock(mutex_);
    for (;;) {
        const auto now = std::chrono::steady_clock::now();
        while (!delayed_.empty() && delayed_.begin()->first <= now) {
            ready_.push_back(std::move(delayed_.begin()->second));
            delayed_.erase(delayed_.begin());
        }
        if (!ready_.empty()) {
            batch.swap(ready_);
            lock.unlock();
            for (auto& task : batch) task();
            batch.clear();
            lock.lock();
            continue;
        }
        if (stopping_) {
            exited_ = true;
            delayed_.clear();
            return;
        }
        if (delayed_.empty()) {
            wake_.wait(lock);
        } else {
            wake_.wait_until(lock, delayed_.begin()->first);
        }
    }
}

}  // namespace platform::http_internal
