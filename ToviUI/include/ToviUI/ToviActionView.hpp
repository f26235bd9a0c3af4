#pragma once
// ToviActionView: a tappable row: icon (24x24, brand colour), label with an optional subtitle
// under it, an end slot, and a right chevron. The whole row is a button with a minimum height
// of 50, drawn at half opacity while pressed.

#include <functional>
#include <optional>
#include <string>

#include "platform/view/Node.hpp"

namespace tovi {

// Builds the row around the button's label (the label text) from the parts it carries.
struct ToviActionButtonStyle {
    std::optional<platform::view::Node> icon = std::nullopt;
    std::optional<std::string> subtitle = std::nullopt;
    std::function<platform::view::Node()> endSlot = {};

    [[nodiscard]] platform::view::Node operator()(const platform::view::Node& label, bool isPressed) const;
};

struct ToviActionView {
    std::optional<platform::view::Node> icon = std::nullopt;
    std::string label;
    std::optional<std::string> subtitle = std::nullopt;
    // What stands before the chevron; nothing by default.
    std::function<platform::view::Node()> endSlot = {};
    std::function<void()> onClick = {};

    [[nodiscard]] platform::view::Node body() const;
    operator platform::view::Node() const { return body(); }  // NOLINT(google-explicit-constructor)
};

}  // namespace tovi
