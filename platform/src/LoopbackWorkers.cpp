#include "LoopbackWorkers.hpp"

namespace platform::loopback_internal {

LoopbackWorkers::LoopbackWorkers(std::size_t keptThreads, std::size_t maxThreads, std::chrono::milliseconds retireAfter)
    : keptThreads_(keptThreads), maxThreads_(std::max<std::size_t>(maxThreads, 1)), retireAfter_(retireAfter) {}

LoopbackWorkers::~LoopbackWorkers() {
    shutdown();
}

void LoopbackWorkers::enqueue(std::function<void()> job) {
    std::lock_guard lock(mutex_);
    joinRetired();
    jobs_.push_back(std::move(job));
    // Every queued job needs a waiting worker of its own: a worker that takes a connection may
    // keep it for seconds.
    if (jobs_.size() > waiting_ && workers_.size() < maxThreads_) {
        std::thread worker([this] { work(); });
        const auto id = worker.get_id();
        workers_.emplace(id, std::move(worker));
    } else {
        wake_.notify_one();
    }
}

void LoopbackWorkers::shutdown() {
    std::map<std::thread::id, std::thread> workers;
    {
        std::lock_guard lock(mutex_);
        stopping_ = true;
        joinRetired();
        workers.swap(workers_);
    }
    wake_.notify_all();
    for (auto& [id, worker] : workers) worker.join();
}

void LoopbackWorkers::work() {
    std::unique_lock lock(mutex_);
    for (;;) {
        ++waiting_;
        const bool woken = wake_.wait_for(lock, retireAfter_, [this] { return stopping_ || !jobs_.empty(); });
        --waiting_;
        if (!jobs_.empty()) {
            auto job = std::move(jobs_.front());
            jobs_.pop_front();
            lock.unlock();
            job();
            lock.lock();
            continue;
        }
        if (stopping_) return;
        if (!woken && workers_.size() > keptThreads_) {
            // Hand our own thread object over for joining; it is joined once this returns.
            auto self = workers_.extract(std::this_thread::get_id());
            retired_.push_back(std::move(self.mapped()));
            return;
        }
    }
}

void LoopbackWorkers::joinRetired() {
    // A retired worker has released the mutex for good; all that is left of it is its exit.
    for (auto& worker : retired_) worker.join();
    retired_.clear();
}

}  // namespace platform::loopback_internal
