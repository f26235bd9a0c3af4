#pragma once
// LoopbackWorkers: the loopback server's worker threads, started as connections need them.
//
// The HTTP library serves a connection on one thread from its first byte to its close, idle
// keep-alive time and a client stalled mid-request included. With a fixed pool, a few dozen
// such sockets hold every thread until their time-outs and each new client waits behind them.
// Here a job never waits while fewer than `maxThreads` workers exist: one is started when every
// worker is busy. Workers beyond `keptThreads` end after `retireAfter` without work, so that a
// burst leaves no lasting threads behind.
//
// Thread safety: `enqueue` may be called from any thread; `shutdown` once, by the server.

#include <httplib.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

namespace platform::loopback_internal {

class LoopbackWorkers final : public httplib::TaskQueue {
public:
    LoopbackWorkers(std::size_t keptThreads, std::size_t maxThreads, std::chrono::milliseconds retireAfter);
    ~LoopbackWorkers() override;

    void enqueue(std::function<void()> job) override;
    // Runs the jobs still queued, then joins every worker.
    void shutdown() override;

private:
    void work();
    // REQUIRES: mutex_ held.
    void joinRetired();

    const std::size_t keptThreads_;
    const std::size_t maxThreads_;
    const std::chrono::milliseconds retireAfter_;

    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<std::function<void()>> jobs_;
    std::map<std::thread::id, std::thread> workers_;
    // Workers that left `work`; joined by the next enqueue or by shutdown.
    std::vector<std::thread> retired_;
    std::size_t waiting_ = 0;
    bool stopping_ = false;
};

}  // namespace platform::loopback_internal
