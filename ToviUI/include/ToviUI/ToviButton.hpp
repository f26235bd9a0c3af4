#pragma once
// ToviButton: the wallet's standard button.
//
//     ToviButton{.label = "Retry", .cornerRadius = 8, .onClick = retry}
//
// Taps are ignored while `enabled` is false or `isLoading` is true. While loading the label is
// only a white progress indicator; otherwise a row (spacing 8) of the left icon, the label in
// the bold body font and the right icon. The corner radius drawn is always 16: `cornerRadius`
// is kept for callers but deliberately has no effect. Absent colours take the design system's
// `buttons.primary` and `text.button` when the body is built.

#include <functional>
#include <optional>
#include <string>

#include "platform/view/Color.hpp"
#include "platform/view/Node.hpp"

namespace tovi {

struct ToviButton {
    std::string label;
    bool enabled = true;
    std::optional<platform::view::Color> backgroundColor = std::nullopt;
    std::optional<platform::view::Color> labelColor = std::nullopt;
    double cornerRadius = 16;
    bool isLoading = false;
    std::optional<platform::view::Node> leftIcon = std::nullopt;
    std::optional<platform::view::Node> rightIcon = std::nullopt;
    std::function<void()> onClick = {};

    // The radius the style always receives.
    static constexpr double drawnCornerRadius = 16;

    [[nodiscard]] platform::view::Node body() const;
    operator platform::view::Node() const { return body(); }  // NOLINT(google-explicit-constructor)
};

}  // namespace tovi
