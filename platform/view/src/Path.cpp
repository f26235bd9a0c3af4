#include "platform/view/Path.hpp"

#include <algorithm>
#include <cmath>

#include "Number.hpp"

namespace platform::view {

namespace {

using internal::appendNumber;

void point(std::string& out, char command, Point p) {
    if (!out.empty()) out += ' ';
    out += command;
    appendNumber(out, p.x);
    out += ' ';
    appendNumber(out, p.y);
}

struct Vec {
    double x, y;
};

Vec sub(Point a, Point b) {
    return {a.x - b.x, a.y - b.y};
}
double len(Vec v) {
    return std::hypot(v.x, v.y);
}

}  // namespace

std::string Path::svgData() const {
    std::string out;
    Point current{};
    Point start{};
    for (const Element& e : elements) {
        if (const auto* m = std::get_if<Move>(&e)) {
            point(out, 'M', m->to);
            current = start = m->to;
        } else if (const auto* l = std::get_if<Line>(&e)) {
            point(out, 'L', l->to);
            current = l->to;
        } else if (const auto* a = std::get_if<ArcTo>(&e)) {
            Vec in = sub(current, a->tangent1);
            Vec outv = sub(a->tangent2, a->tangent1);
            double l1 = len(in);
            double l2 = len(outv);
            double cross = in.x * outv.y - in.y * outv.x;
            if (a->radius <= 0 || l1 == 0 || l2 == 0 || std::fabs(cross) < 1e-12 * l1 * l2) {
                point(out, 'L', a->tangent1);  // degenerate: the corner itself
                current = a->tangent1;
                continue;
            }
            Vec u1{in.x / l1, in.y / l1};
            Vec u2{outv.x / l2, outv.y / l2};
            double cosTheta = std::clamp(u1.x * u2.x + u1.y * u2.y, -1.0, 1.0);
            double theta = std::acos(cosTheta);
            double d = a->radius / std::tan(theta / 2);
            Point t1{a->tangent1.x + u1.x * d, a->tangent1.y + u1.y * d};
            Point t2{a->tangent1.x + u2.x * d, a->tangent1.y + u2.y * d};
            point(out, 'L', t1);
            // Travelling along -u1 and turning towards u2: a right turn on screen (y down) is a
            // clockwise sweep.
            bool clockwise = (-u1.x) * u2.y - (-u1.y) * u2.x > 0;
            out += " A";
            appendNumber(out, a->radius);
            out += ' ';
            appendNumber(out, a->radius);
            out += clockwise ? " 0 0 1 " : " 0 0 0 ";
            appendNumber(out, t2.x);
            out += ' ';
            appendNumber(out, t2.y);
            current = t2;
        } else if (const auto* q = std::get_if<Quad>(&e)) {
            point(out, 'Q', q->control);
            out += ' ';
            appendNumber(out, q->to.x);
            out += ' ';
            appendNumber(out, q->to.y);
            current = q->to;
        } else if (const auto* c = std::get_if<Curve>(&e)) {
            point(out, 'C', c->control1);
            for (Point p : {c->control2, c->to}) {
                out += ' ';
                appendNumber(out, p.x);
                out += ' ';
                appendNumber(out, p.y);
            }
            current = c->to;
        } else {
            out += out.empty() ? "Z" : " Z";
            current = start;
        }
    }
    return out;
}

}  // namespace platform::view
