#pragma once
// Path: a custom shape's outline as a list of drawing commands, kept as the commands (not
// flattened) so that tests can check the exact points a shape was drawn through.

#include <string>
#include <variant>
#include <vector>

#include "platform/view/Geometry.hpp"

namespace platform::view {

struct Path {
    struct Move {
        Point to{};
        friend bool operator==(const Move&, const Move&) = default;
    };
    struct Line {
        Point to{};
        friend bool operator==(const Line&, const Line&) = default;
    };
    // A tangent arc, as the phone's `addArc(tangent1End:tangent2End:radius:)`: a straight line
    // from the current point towards `tangent1`, then an arc of `radius` that turns towards
    // `tangent2`, ending where it touches the line from `tangent1` to `tangent2`.
    struct ArcTo {
        Point tangent1{};
        Point tangent2{};
        double radius = 0;
        friend bool operator==(const ArcTo&, const ArcTo&) = default;
    };
    struct Quad {
        Point control{};
        Point to{};
        friend bool operator==(const Quad&, const Quad&) = default;
    };
    struct Curve {
        Point control1{};
        Point control2{};
        Point to{};
        friend bool operator==(const Curve&, const Curve&) = default;
    };
    struct Close {
        friend bool operator==(const Close&, const Close&) = default;
    };
    using Element = std::variant<Move, Line, ArcTo, Quad, Curve, Close>;

    std::vector<Element> elements{};

    Path& move(Point to) { return add(Move{to}); }
    Path& line(Point to) { return add(Line{to}); }
    Path& arcTo(Point tangent1, Point tangent2, double radius) { return add(ArcTo{tangent1, tangent2, radius}); }
    Path& quad(Point control, Point to) { return add(Quad{control, to}); }
    Path& curve(Point c1, Point c2, Point to) { return add(Curve{c1, c2, to}); }
    Path& close() { return add(Close{}); }

    // SVG path data ("M.. L.. A.. Z"); tangent arcs become a line and an elliptical arc.
    // Numbers are printed with at most three decimals, so equal paths give equal text.
    [[nodiscard]] std::string svgData() const;

    friend bool operator==(const Path&, const Path&) = default;

private:
    Path& add(Element e) {
        elements.push_back(e);
        return *this;
    }
};

}  // namespace platform::view
