#pragma once
// Geometry of the view tree: points, sizes, rectangles, edge insets, edge sets and alignments.
// All lengths are design points.

#include <cstdint>
#include <limits>

namespace platform::view {

// Stands for "as much as offered" in frames (the phone's `.infinity`).
inline constexpr double infinity = std::numeric_limits<double>::infinity();

struct Point {
    double x = 0;
    double y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
    double width = 0;
    double height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    [[nodiscard]] constexpr double minX() const { return x; }
    [[nodiscard]] constexpr double minY() const { return y; }
    [[nodiscard]] constexpr double maxX() const { return x + width; }
    [[nodiscard]] constexpr double maxY() const { return y + height; }
    [[nodiscard]] constexpr double midX() const { return x + width / 2; }
    [[nodiscard]] constexpr double midY() const { return y + height / 2; }
    friend bool operator==(const Rect&, const Rect&) = default;
};

// A set of edges, combinable with `|`: `Edge::top | Edge::leading`.
enum class Edge : std::uint8_t {
    none = 0,
    top = 1,
    bottom = 2,
    leading = 4,
    trailing = 8,
    vertical = top | bottom,
    horizontal = leading | trailing,
    all = vertical | horizontal,
};

[[nodiscard]] constexpr Edge operator|(Edge a, Edge b) {
    return static_cast<Edge>(static_cast<std::uint8_t>(a) | static_cast<std::uint8_t>(b));
}
[[nodiscard]] constexpr bool contains(Edge set, Edge edge) {
    return (static_cast<std::uint8_t>(set) & static_cast<std::uint8_t>(edge)) == static_cast<std::uint8_t>(edge);
}

struct EdgeInsets {
    double top = 0;
    double leading = 0;
    double bottom = 0;
    double trailing = 0;

    [[nodiscard]] static constexpr EdgeInsets on(Edge edges, double length) {
        return {contains(edges, Edge::top) ? length : 0, contains(edges, Edge::leading) ? length : 0,
                contains(edges, Edge::bottom) ? length : 0, contains(edges, Edge::trailing) ? length : 0};
    }
    constexpr EdgeInsets& operator+=(const EdgeInsets& o) {
        top += o.top;
        leading += o.leading;
        bottom += o.bottom;
        trailing += o.trailing;
        return *this;
    }
    [[nodiscard]] constexpr bool isZero() const { return top == 0 && leading == 0 && bottom == 0 && trailing == 0; }
    friend bool operator==(const EdgeInsets&, const EdgeInsets&) = default;
};

// One alignment type for stacks, frames and overlays. A vertical stack reads only the
// horizontal part (leading, center, trailing); a horizontal stack only the vertical part.
enum class Alignment : std::uint8_t {
    topLeading,
    top,
    topTrailing,
    leading,
    center,
    trailing,
    bottomLeading,
    bottom,
    bottomTrailing,
};

enum class HorizontalPart : std::uint8_t { leading, center, trailing };
enum class VerticalPart : std::uint8_t { top, center, bottom };

[[nodiscard]] constexpr HorizontalPart horizontalPart(Alignment a) {
    return static_cast<HorizontalPart>(static_cast<int>(a) % 3);
}
[[nodiscard]] constexpr VerticalPart verticalPart(Alignment a) {
    return static_cast<VerticalPart>(static_cast<int>(a) / 3);
}

// A point in unit coordinates of a rectangle (0,0 is top leading), for gradients.
struct UnitPoint {
    double x = 0.5;
    double y = 0.5;
    static constexpr UnitPoint topLeading() { return {0, 0}; }
    static constexpr UnitPoint top() { return {0.5, 0}; }
    static constexpr UnitPoint bottom() { return {0.5, 1}; }
    static constexpr UnitPoint leading() { return {0, 0.5}; }
    static constexpr UnitPoint trailing() { return {1, 0.5}; }
    static constexpr UnitPoint bottomTrailing() { return {1, 1}; }
    friend bool operator==(const UnitPoint&, const UnitPoint&) = default;
};

}  // namespace platform::view
