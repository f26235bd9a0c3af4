#pragma once
// A named serial executor with a thread of its own, for work that needs strict ordering away
// from the main queue (a session's delegate callbacks, a store's writes).

#include <chrono>
#include <string>
#include <utility>

#include "platform/Executor.hpp"
#include "platform/ThreadPool.hpp"

namespace platform {

// Runs its tasks one at a time, in deadline order and post order for equal deadlines, on its
// own thread. Shutdown and destruction behave as for `ThreadPool`.
//
// Thread safety: as `ThreadPool`.
class SerialQueue final : public Executor {
public:
    explicit SerialQueue(std::string label);

    void post(Task task) override { thread_.post(std::move(task)); }
    void postAfter(std::chrono::milliseconds delay, Task task) override { thread_.postAfter(delay, std::move(task)); }
    [[nodiscard]] bool isCurrent() const override { return thread_.isCurrent(); }

    void shutdown() { thread_.shutdown(); }

    [[nodiscard]] const std::string& label() const { return label_; }

private:
    std::string label_;
    ThreadPool thread_;
};

}  // namespace platform
