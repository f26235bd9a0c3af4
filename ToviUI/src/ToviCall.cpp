#include "ToviUI/ToviCall.hpp"

#include <utility>

namespace tovi {

CancellationToken::CancellationToken() : state_(std::make_shared<State>()) {}

void CancellationToken::cancel() const {
    std::vector<std::move_only_function<void()>> handlers;
    {
        std::lock_guard lock(state_->mutex);
        if (state_->cancelled) return;
        state_->cancelled = true;
        handlers = std::exchange(state_->handlers, {});
    }
    for (auto& handler : handlers) handler();
}

bool CancellationToken::isCancelled() const {
    std::lock_guard lock(state_->mutex);
    return state_->cancelled;
}

void CancellationToken::onCancel(std::move_only_function<void()> handler) const {
    {
        std::lock_guard lock(state_->mutex);
        if (!state_->cancelled) {
            state_->handlers.push_back(std::move(handler));
            return;
        }
    }
    handler();
}

}  // namespace tovi
