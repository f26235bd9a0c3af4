#pragma once
// Internal: the serial delegate queue of a CurlSession, one thread of its own.

#include "platform/Executor.hpp"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <thread>

namespace platform::http_internal {

// Runs tasks one at a time, in posting order, on its own thread. `shutdown()` (also run by
// the destructor) runs every task already due, drops delayed ones that are not, and joins;
// after that, `post` runs its task at once on the calling thread.
// REQUIRES: shutdown/destruction not from the queue's own thread.
class HttpDelegateQueue final : public Executor {
public:
    HttpDelegateQueue();
    ~HttpDelegateQueue() override;

    void post(Task task) override;
    void postAfter(std::chrono::milliseconds delay, Task task) override;
    [[nodiscard]] bool isCurrent() const override;
    void shutdown();

private:
    void run();

    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<Task> ready_;
    std::multimap<std::chrono::steady_clock::time_point, Task> delayed_;
    bool stopping_ = false;
    bool exited_ = false;
    std::thread thread_;
};

}  // namespace platform::http_internal
