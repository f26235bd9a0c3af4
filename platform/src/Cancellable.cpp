#include "platform/Cancellable.hpp"

#include <utility>

namespace platform {

AnyCancellable::AnyCancellable(std::move_only_function<void()> onCancel) : onCancel_(std::move(onCancel)) {}

AnyCancellable::~AnyCancellable() {
    cancel();
}

AnyCancellable::AnyCancellable(AnyCancellable&& other) noexcept : onCancel_(std::exchange(other.onCancel_, nullptr)) {}

AnyCancellable& AnyCancellable::operator=(AnyCancellable&& other) noexcept {
    if (this != &other) {
        auto incoming = std::exchange(other.onCancel_, nullptr);
        cancel();
        onCancel_ = std::move(incoming);
    }
    return *this;
}

void AnyCancellable::cancel() {
    // Taken out first: the action may destroy the object that owns this cancellable, so
    // nothing here touches `this` after it runs.
    auto action = std::exchange(onCancel_, nullptr);
    if (action) action();
}

void AnyCancellable::store(CancellableSet& set) && {
    set.insert(std::move(*this));
}

void AnyCancellable::store(std::vector<AnyCancellable>& list) && {
    list.push_back(std::move(*this));
}

CancellableSet& CancellableSet::operator=(CancellableSet&& other) noexcept {
    if (this != &other) {
        auto incoming = std::exchange(other.items_, {});
        cancelAll();
        items_ = std::move(incoming);
    }
    return *this;
}

void CancellableSet::cancelAll() {
    auto items = std::exchange(items_, {});
    for (auto& item : items) item.cancel();
}

}  // namespace platform
