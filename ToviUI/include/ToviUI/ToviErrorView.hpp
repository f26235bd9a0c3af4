#pragma once
// ToviErrorView: what the wallet shows when the balance cannot be loaded: an error badge,
// "Please try again.", an explanation and a "Retry" button that calls `onRetryClick`.

#include <functional>

#include "platform/view/Node.hpp"

namespace tovi {

struct ToviErrorView {
    std::function<void()> onRetryClick;

    [[nodiscard]] platform::view::Node body() const;
    operator platform::view::Node() const { return body(); }  // NOLINT(google-explicit-constructor)
};

}  // namespace tovi
