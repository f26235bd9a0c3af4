#pragma once
// AlertArrowUpShape: the mirror image of AlertArrowDownShape, the arrow centred on top. In a
// rectangle W x H, with M = W/2 and A = arrowHeight: from (M - A, A) to the tip (M, 0), to
// (M + A, A), then round the body (from A to H) by tangent arcs through (W, A), (W, H), (0, H)
// and (0, A), and closed.

#include "platform/view/Node.hpp"
#include "platform/view/Path.hpp"

namespace tovi {

struct AlertArrowUpShape {
    double cornerRadius = 12;
    double arrowHeight = 6;

    [[nodiscard]] platform::view::Path path(platform::view::Rect rect) const;
    [[nodiscard]] platform::view::Node shape() const;
};

}  // namespace tovi
