#pragma once
// Paint: what fills or strokes a shape, a solid colour or a linear gradient.

#include <variant>
#include <vector>

#include "platform/view/Color.hpp"
#include "platform/view/Geometry.hpp"

namespace platform::view {

// Colours are spread evenly from `start` to `end`.
struct LinearGradient {
    std::vector<Color> colors{};
    UnitPoint start = UnitPoint::top();
    UnitPoint end = UnitPoint::bottom();
    friend bool operator==(const LinearGradient&, const LinearGradient&) = default;
};

using Paint = std::variant<Color, LinearGradient>;

struct Stroke {
    Paint paint = Color::black();
    double lineWidth = 1;
    double miterLimit = 10;
    friend bool operator==(const Stroke&, const Stroke&) = default;
};

}  // namespace platform::view
