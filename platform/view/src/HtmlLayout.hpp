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
// Stacks, groups and buttons: nodes laid out from their children.
[[nodiscard]] bool isContainer(Kind k);
// Where the parent's flow puts a node that fills `f`. Only a node with `noMinimum` (a leaf that
// fills: a shape, a resizable image, a spacer, a scroll view, a field) may be squeezed to
// nothing. A container or a frame that fills because of what it holds keeps at least the size
// of its content, the browser's automatic minimum, as a stack is never smaller than what it
// holds; squeezing it would let its content spill over its neighbours.
[[nodiscard]] std::string placeStyle(Fill f, Flow flow, bool noMinimum);
[[nodiscard]] std::string cornerStyle(const ShapeProps& s, const Ctx& ctx);
// The width and height of an SVG's viewBox.
[[nodiscard]] std::optional<Size> viewBoxSize(const std::string& svg);

}  // namespace platform::view::internal
