#pragma once
// AlertArrowDownShape: a rounded bubble with an arrow of `arrowHeight` centred under it.
// In a rectangle W x H, with M = W/2 and B = H - arrowHeight: from (M - A, B) to the tip (M, H),
// to (M + A, B), then round the body by tangent arcs of `cornerRadius` through (W, B), (W, 0),
// (0, 0) and (0, B), and closed.

#include "platform/view/Node.hpp"
#include "platform/view/Path.hpp"

namespace tovi {

struct AlertArrowDownShape {
    double cornerRadius = 12;
    double arrowHeight = 6;

    [[nodiscard]] platform::view::Path path(platform::view::Rect rect) const;
    // The shape as a node, ready for fill and stroke.
    [[nodiscard]] platform::view::Node shape() const;
};

}  // namespace tovi
