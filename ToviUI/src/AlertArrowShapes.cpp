#include "ToviUI/AlertArrowDownShape.hpp"
#include "ToviUI/AlertArrowUpShape.hpp"
#include "platform/view/Builders.hpp"

namespace tovi {

using namespace platform::view;

Path AlertArrowDownShape::path(Rect rect) const {
    const double w = rect.width;
    const double h = rect.height;
    const double a = arrowHeight;
    const double r = cornerRadius;
    const double m = w * 0.5;
    const double b = h - a;
    Path p;
    p.move({m - a, b}).line({m, h}).line({m + a, b});
    p.arcTo({w, b}, {w, 0}, r).arcTo({w, 0}, {0, 0}, r).arcTo({0, 0}, {0, b}, r).arcTo({0, b}, {m - a, b}, r);
    return p.close();
}

Node AlertArrowDownShape::shape() const {
    return PathShape("AlertArrowDownShape", [shape = *this](Rect rect) { return shape.path(rect); });
}

Path AlertArrowUpShape::path(Rect rect) const {
    const double w = rect.width;
    const double h = rect.height;
    const double a = arrowHeight;
    const double r = cornerRadius;
    const double m = w * 0.5;
    Path p;
    p.move({m - a, a}).line({m, 0}).line({m + a, a});
    p.arcTo({w, a}, {w, h}, r).arcTo({w, h}, {0, h}, r).arcTo({0, h}, {0, a}, r).arcTo({0, a}, {m - a, a}, r);
    return p.close();
}

Node AlertArrowUpShape::shape() const {
    return PathShape("AlertArrowUpShape", [shape = *this](Rect rect) { return shape.path(rect); });
}

}  // namespace tovi
