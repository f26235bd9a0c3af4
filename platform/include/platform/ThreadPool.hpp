#pragma once
// Background threads for work that must stay off the main queue.
//
// Usage:
//   platform::backgroundPool().post([] { auto bytes = readFile(); platform::mainQueue().post(...); });

#include <chrono>
#include <cstddef>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "platform/Executor.hpp"

namespace platform {

namespace internal {
class TimedTaskQueue;
}

// A fixed set of worker threads sharing one queue. Tasks that are due run in post order of
// their deadlines, but several may run at the same time on different workers.
//
// Shutdown (`shutdown()` or destruction) stops accepting tasks, lets the workers finish the
// tasks already due, drops delayed tasks that are not yet due, and joins the workers. Tasks
// posted after that are dropped silently.
//
// Thread safety: every member may be called from any thread, except that `shutdown()` and the
// destructor must not be called from one of the pool's own tasks (a worker can't join itself).
class ThreadPool final : public Executor {
public:
    // A count of 0 is taken as 1. `name` labels the worker threads for debuggers (15 chars max).
    explicit ThreadPool(std::size_t threadCount, std::string name = "tovi-pool");
    ~ThreadPool() override;
    ThreadPool(const ThreadPool&) = delete;
    ThreadPool& operator=(const ThreadPool&) = delete;

    void post(Task task) override;
    void postAfter(std::chrono::milliseconds delay, Task task) override;

    // True on a worker of this pool while it runs a task.
    [[nodiscard]] bool isCurrent() const override;

    void shutdown();

    [[nodiscard]] std::size_t threadCount() const { return threadCount_; }

private:
    void work();

    std::size_t threadCount_;
    std::unique_ptr<internal::TimedTaskQueue> queue_;
    std::vector<std::thread> workers_;
    std::mutex shutdownMutex_;
};

// The process-wide background pool, with between 2 and 4 workers depending on the machine.
// It lives until the end of the process.
[[nodiscard]] ThreadPool& backgroundPool();

}  // namespace platform
