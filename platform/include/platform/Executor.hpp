#pragma once
// Executors: where work and completions run.
//
// The product has one asynchronous model: an operation takes a completion and an executor,
// and the completion is posted to that executor. There is a process-wide main queue (views,
// view models, elements and default API completions live there), a background pool for work
// that must stay off it, and named serial queues where a subsystem needs its own order.

#include <chrono>
#include <functional>
#include <memory>

namespace platform {

using Task = std::move_only_function<void()>;

// Thread safety: every Executor accepts `post` and `postAfter` from any thread.
class Executor {
public:
    virtual ~Executor() = default;

    // Runs `task` later, after every task already due. Tasks with equal deadlines run in
    // the order they were posted.
    virtual void post(Task task) = 0;

    // Runs `task` once `delay` has passed on this executor's clock.
    virtual void postAfter(std::chrono::milliseconds delay, Task task) = 0;

    // True when the calling thread is currently running a task of this executor.
    [[nodiscard]] virtual bool isCurrent() const = 0;
};

}  // namespace platform
