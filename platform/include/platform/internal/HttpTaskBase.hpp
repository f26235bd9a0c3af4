#pragma once
// Internal: the exactly-once completion logic shared by every DataTask implementation.

#include "platform/HttpSession.hpp"

#include <atomic>
#include <memory>

namespace platform::http_internal {

// A task whose completion is claimed by the first of `complete()` and `cancel()`; the
// loser does nothing. The completion is posted to `executor`, or run inline when it is
// null. Subclasses start and stop the actual exchange in onResume/onCancel.
class HttpTaskBase : public DataTask, public std::enable_shared_from_this<HttpTaskBase> {
public:
    HttpTaskBase(std::uint64_t identifier, HttpCompletion completion, Executor* executor);

    [[nodiscard]] std::uint64_t taskIdentifier() const final { return identifier_; }
    [[nodiscard]] HttpTaskState state() const final { return state_.load(std::memory_order_acquire); }
    [[nodiscard]] std::shared_ptr<const HttpProgress> progress() const final { return progress_; }
    void resume() final;
    void cancel() final;

    // Delivers `result` unless the task was already completed or cancelled; answers whether
    // it did.
    bool complete(HttpResult result);
    [[nodiscard]] bool isFinished() const { return finished_.load(std::memory_order_acquire); }
    [[nodiscard]] HttpProgress& mutableProgress() { return *progress_; }

protected:
    virtual void onResume() = 0;
    // Called once, after the cancellation has been claimed.
    virtual void onCancel() = 0;

private:
    bool claim();
    void deliver(HttpResult result);

    const std::uint64_t identifier_;
    HttpCompletion completion_;
    Executor* executor_;
    std::shared_ptr<HttpProgress> progress_ = std::make_shared<HttpProgress>();
    std::atomic<HttpTaskState> state_{HttpTaskState::suspended};
    std::atomic<bool> finished_{false};
};

[[nodiscard]] HttpError cancelledError();

}  // namespace platform::http_internal
