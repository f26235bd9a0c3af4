#pragma once
// RequestTask: the handle that every `execute` returns, through which a caller cancels.
//
// A builder owns one RequestTask for its whole life. Each execution (a retry included) stores
// its transport task here, replacing the previous one, so `cancel()` always reaches the latest
// attempt. Cancelling completes the call with code -1 and the transport's `cancelled` error;
// a second `cancel()`, or one after the call finished, does nothing.
//
// Thread safety: every member may be called from any thread; one recursive lock guards the
// stored task.

#include <memory>
#include <mutex>

#include "platform/HttpSession.hpp"

namespace korvane {

class RequestTask {
public:
    RequestTask() = default;
    RequestTask(const RequestTask&) = delete;
    RequestTask& operator=(const RequestTask&) = delete;

    void cancel();

    // The transport task of the latest attempt, or null (before the first start, after cancel).
    [[nodiscard]] std::shared_ptr<platform::DataTask> task() const;
    // Runtime side: stores the task of a new attempt.
    void setTask(std::shared_ptr<platform::DataTask> task);

private:
    mutable std::recursive_mutex lock_;
    std::shared_ptr<platform::DataTask> task_;
};

}  // namespace korvane
