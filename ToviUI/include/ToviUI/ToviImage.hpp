#pragma once
// ToviImage: one of the wallet's image assets, resizable and stretched to its frame.

#include "ToviUI/ToviImageSource.hpp"
#include "platform/view/Kinds.hpp"
#include "platform/view/Node.hpp"

namespace tovi {

struct ToviImage {
    ToviImageSource source;
    platform::view::RenderingMode renderingMode = platform::view::RenderingMode::original;

    [[nodiscard]] platform::view::Node body() const;
    operator platform::view::Node() const { return body(); }  // NOLINT(google-explicit-constructor)
};

}  // namespace tovi
