#pragma once
// Layout helpers of the HTML renderer: how a node takes the space its parent offers, and the
// CSS of positions, corners and asset sizes.

#include <cstdint>
#include <optional>
#include <string>

#include "platform/view/NodeData.hpp"

namespace platform::view::internal {

// How the parent lays out the element: a flex column, a flex row, or layered in a grid cell.
enum class Flow : std::uint8_t { column, row, grid };

// Whether a node takes all the width (height) it is offered.
struct Fill {
    bool w = false;
    bool h = false;
};

// The size the renderer expects a node to get, to draw custom paths at their own proportions,
// and the tint in force.
struct Ctx {
    double w = 0;
    double h = 0;
    std::optional<Color> tint;
};

[[nodiscard]] const char* flexPosition(HorizontalPart p);
[[nodiscard]] const char* flexPosition(VerticalPart p);
[[nodiscard]] const char* gridPosition(HorizontalPart p);
[[nodiscard]] const char* gridPosition(VerticalPart p);
[[nodiscard]] std::string px(double v);
// What the node's content takes, before its own frames.
[[nodiscard]] Fill contentFill(const Node& n, Kind parentKind);
[[nodiscard]] Fill applyFrame(Fill f, const std::optional<Frame>& frame);
// What the node takes with all its frames applied.
[[nodiscard]] Fill fillOf(const Node& n, Kind parentKind);
[[nodiscard]] std::string placeStyle(Fill f, Flow flow);
[[nodiscard]] std::string cornerStyle(const ShapeProps& s, const Ctx& ctx);
// The width and height of an SVG's viewBox.
[[nodiscard]] std::optional<Size> viewBoxSize(const std::string& svg);

}  // namespace platform::view::internal
