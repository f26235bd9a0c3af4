#pragma once
// The asset table generated at build time from resources/*.svg.

#include <span>
#include <string_view>

namespace tovi::internal {

struct EmbeddedAsset {
    std::string_view name;
    std::string_view svg;
};

[[nodiscard]] std::span<const EmbeddedAsset> assetTable();

}  // namespace tovi::internal
