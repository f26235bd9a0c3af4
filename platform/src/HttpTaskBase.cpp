#include "platform/internal/HttpTaskBase.hpp"

#include <utility>

namespace platform::http_internal {

HttpTaskBase::HttpTaskBase(std::uint64_t identifier, HttpCompletion completion, Executor* executor)
    : identifier_(identifier), completion_(std::move(completion)), executor_(executor) {}

HttpError cancelledError() {
    return HttpError{HttpErrorCode::cancelled, "cancelled", 0};
}

void HttpTaskBase::resume() {
    auto expected = HttpTaskState::suspended;
    if (state_.compare_exchange_strong(expected, HttpTaskState::running, std::memory_order_acq_rel)) onResume();
}

void HttpTaskBase::cancel() {
    if (!claim()) return;
    state_.store(HttpTaskState::canceling, std::memory_order_release);
    onCancel();
    deliver(failure(cancelledError()));
}

bool HttpTaskBase::complete(HttpResult result) {
    if (!claim()) return false;
    deliver(std::move(result));
    return true;
}

bool HttpTaskBase::claim() {
    return !finished_.exchange(true, std::memory_order_acq_rel);
}

void HttpTaskBase::deliver(HttpResult result) {
    // Only the claimant gets here, so the completion is touched by one thread only.
    auto run = [self = shared_from_this(), completion = std::move(completion_), result = std::move(result)]() mutable {
        self->state_.store(HttpTaskState::completed, std::memory_order_release);
        if (completion) completion(std::move(result));
    };
    if (executor_ != nullptr) {
        executor_->post(std::move(run));
    } else {
        run();
    }
}

}  // namespace platform::http_internal
