#pragma once
// CSS and HTML text for the renderer: escaping, colours, paints, fonts, system symbols.

#include <optional>
#include <string>
#include <string_view>

#include "platform/view/Color.hpp"
#include "platform/view/Font.hpp"
#include "platform/view/Modifiers.hpp"
#include "platform/view/Paint.hpp"

namespace platform::view::internal {

void appendEscaped(std::string& out, std::string_view text);
[[nodiscard]] std::string css(const Color& color);
// A CSS background value.
[[nodiscard]] std::string css(const Paint& paint);
// The first colour of a paint, for places that take one colour only (strokes).
[[nodiscard]] Color firstColor(const Paint& paint);
[[nodiscard]] std::string cssFont(const Font& font);
// "transition:all 0.5s ease-in-out;" for an animated change.
[[nodiscard]] std::string cssTransition(const Animation& animation);
// Inline SVG of a system symbol drawn with currentColor, or absent for unknown names.
[[nodiscard]] std::optional<std::string_view> systemSymbolSvg(std::string_view name);

}  // namespace platform::view::internal
