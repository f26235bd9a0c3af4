#pragma once
// ToviBaseButtonStyle: the wallet's button look. Around the label, from back to front: a fill
// in a rounded rectangle of `cornerRadius` (at 0.8 opacity while pressed), a black cover at 0.2
// while pressed, and a white cover at 0.5 while disabled. A disabled button is washed out
// rather than recoloured.

#include "platform/view/Color.hpp"
#include "platform/view/Node.hpp"

namespace tovi {

struct ToviBaseButtonStyle {
    platform::view::Color backgroundColor;
    platform::view::Color textColor;
    double cornerRadius = 16;
    bool enabled = true;

    [[nodiscard]] platform::view::Node operator()(const platform::view::Node& label, bool isPressed) const;
};

}  // namespace tovi
