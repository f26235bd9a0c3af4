#include "ToviUI/AlertArrowDownShape.hpp"
#include "ToviUI/AlertArrowUpShape.hpp"
#include "platform/view/Builders.hpp"

namespace tovi {

using namespace platform::view;

namespace {

// A rounded bubble with a triangular arrow centred on its top or bottom edge: the arrow stands on
// the edge at `baseY` and points at `tipY`; `farY` is the opposite edge.
Path bubble(double width, double arrowHeight, double cornerRadius, double tipY, double baseY, double farY) {
    const double w = width;
    const double a = arrowHeight;
    const double r = cornerRadius;
    const double m = w * 0.5;
    Path p;
    p.move({m - a, baseY}).line({m, tipY}).line({m + a, baseY});
    p.arcTo({w, baseY}, {w, farY}, r)
        .arcTo({w, farY}, {0, farY}, r)
        .arcTo({0, farY}, {0, baseY}, r)
        .arcTo({0, baseY}, {m - a, baseY}, r);
    return p.close();
}

}  // namespace

Path AlertArrowDownShape::path(Rect rect) const {
    return bubble(rect.width, arrowHeight, cornerRadius, rect.height, rect.height - arrowHeight, 0);
}

Node AlertArrowDownShape::shape() const {
    return PathShape("AlertArrowDownShape", [shape = *this](Rect rect) { return shape.path(rect); });
}

Path AlertArrowUpShape::path(Rect rect) const {
    return bubble(rect.width, arrowHeight, cornerRadius, 0, arrowHeight, rect.height);
}

Node AlertArrowUpShape::shape() const {
    return PathShape("AlertArrowUpShape", [shape = *this](Rect rect) { return shape.path(rect); });
}

}  // namespace tovi
