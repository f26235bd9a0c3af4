#include "ToviUI/ToviBaseButtonStyle.hpp"

#include "platform/view/Builders.hpp"

namespace tovi {

using namespace platform::view;

Node ToviBaseButtonStyle::operator()(const Node& label, bool isPressed) const {
    Node content = label;
    return content.foregroundColor(textColor)
        .padding(Edge::horizontal, 16)
        .frame(Frame{.minHeight = 52})
        .background(RoundedRectangle(cornerRadius).fill(isPressed ? backgroundColor.opacity(0.8) : backgroundColor))
        .overlay(RoundedRectangle(cornerRadius).fill(isPressed ? Color::black().opacity(0.2) : Color::clear()))
        .overlay(RoundedRectangle(cornerRadius).fill(enabled ? Color::clear() : Color::white().opacity(0.5)));
}

}  // namespace tovi
