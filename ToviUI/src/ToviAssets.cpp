#include "ToviUI/ToviAssets.hpp"

#include <string>

#include "ToviAssetTable.hpp"
#include "ToviUI/ToviTheme.hpp"

namespace tovi {

std::optional<std::string_view> toviAssetSvg(std::string_view name) {
    for (const auto& asset : internal::assetTable()) {
        if (asset.name == name) return asset.svg;
    }
    return std::nullopt;
}

platform::view::HtmlOptions toviHtmlOptions(std::string title) {
    platform::view::HtmlOptions options;
    options.title = std::move(title);
    options.assets = [](const platform::view::ImageSource& source) -> std::optional<std::string> {
        if (source.bundle != ToviTheme::bundle) return std::nullopt;
        if (auto svg = toviAssetSvg(source.name)) return std::string(*svg);
        return std::nullopt;
    };
    return options;
}

}  // namespace tovi
