#pragma once
// ToviAssets: the SVG drawings of the wallet's bundle, compiled into the library.

#include <optional>
#include <string>
#include <string_view>

#include "platform/view/HtmlRenderer.hpp"

namespace tovi {

// The SVG text of the asset named `name`, or absent.
[[nodiscard]] std::optional<std::string_view> toviAssetSvg(std::string_view name);

// Options for rendering wallet screens: the wallet bundle's assets are resolved.
[[nodiscard]] platform::view::HtmlOptions toviHtmlOptions(std::string title = "Tovi");

}  // namespace tovi
