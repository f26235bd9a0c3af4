#include "HtmlLayout.hpp"

#include <cmath>
#include <cstdlib>

#include "Number.hpp"

namespace platform::view::internal {

const char* flexPosition(HorizontalPart p) {
    switch (p) {
        case HorizontalPart::leading:
            return "flex-start";
        case HorizontalPart::trailing:
            return "flex-end";
        default:
            return "center";
    }
}

const char* flexPosition(VerticalPart p) {
    switch (p) {
        case VerticalPart::top:
            return "flex-start";
        case VerticalPart::bottom:
            return "flex-end";
        default:
            return "center";
    }
}

const char* gridPosition(HorizontalPart p) {
    return p == HorizontalPart::leading ? "start" : (p == HorizontalPart::trailing ? "end" : "center");
}

const char* gridPosition(VerticalPart p) {
    return p == VerticalPart::top ? "start" : (p == VerticalPart::bottom ? "end" : "center");
}

std::string px(double v) {
    return number(v) + "px";
}

Fill contentFill(const Node& n, Kind parentKind) {
    const NodeData& d = n.data();
    switch (d.kind) {
        case Kind::shape:
        case Kind::scrollView:
        case Kind::navigationStack:
        case Kind::asyncImage:
            return {true, true};
        case Kind::image:
            return d.as<ImageProps>()->resizable ? Fill{true, true} : Fill{};
        case Kind::toggle:
        case Kind::textField:
            return {true, false};
        case Kind::progress:
            return {d.as<ProgressProps>()->value.has_value(), false};
        case Kind::spacer:
            return {parentKind == Kind::hstack, parentKind == Kind::vstack};
        case Kind::divider:
            return {parentKind != Kind::hstack, parentKind == Kind::hstack};
        case Kind::vstack:
        case Kind::hstack:
        case Kind::zstack:
        case Kind::group:
        case Kind::button: {
            Fill f;
            for (const Node& child : d.children) {
                Fill c = fillOf(child, d.kind);
                f.w = f.w || c.w;
                f.h = f.h || c.h;
            }
            return f;
        }
        default:
            return {};
    }
}

Fill applyFrame(Fill f, const std::optional<Frame>& frame) {
    if (!frame) return f;
    if (frame->width) {
        f.w = false;
    } else if (frame->maxWidth && std::isinf(*frame->maxWidth)) {
        f.w = true;
    }
    if (frame->height) {
        f.h = false;
    } else if (frame->maxHeight && std::isinf(*frame->maxHeight)) {
        f.h = true;
    }
    return f;
}

Fill fillOf(const Node& n, Kind parentKind) {
    Fill f = contentFill(n, parentKind);
    for (const Layer& layer : n->layers) f = applyFrame(f, layer.frame);
    return f;
}

bool isContainer(Kind k) {
    return k == Kind::vstack || k == Kind::hstack || k == Kind::zstack || k == Kind::group || k == Kind::button;
}

std::string placeStyle(Fill f, Flow flow, bool noMinimum) {
    std::string s;
    switch (flow) {
        case Flow::column:
            if (f.w) s += "align-self:stretch;";
            if (f.h) s += noMinimum ? "flex:1 1 0;min-height:0;" : "flex:1 1 0;";
            break;
        case Flow::row:
            if (f.w) s += noMinimum ? "flex:1 1 0;min-width:0;" : "flex:1 1 0;";
            if (f.h) s += "align-self:stretch;";
            break;
        case Flow::grid:
            if (f.w) s += "justify-self:stretch;";
            if (f.h) s += "align-self:stretch;";
            break;
    }
    return s;
}

std::string cornerStyle(const ShapeProps& s, const Ctx& ctx) {
    switch (s.shape) {
        case ShapeKind::roundedRectangle:
            return "border-radius:" + px(s.cornerRadius) + ";";
        case ShapeKind::circle:
        case ShapeKind::ellipse:
            return "border-radius:50%;";
        case ShapeKind::capsule:
            return "border-radius:9999px;";
        case ShapeKind::path:
            return "clip-path:path('" + s.pathIn({0, 0, ctx.w, ctx.h}).svgData() + "');";
        default:
            return {};
    }
}

std::optional<Size> viewBoxSize(const std::string& svg) {
    auto at = svg.find("viewBox=\"");
    if (at == std::string::npos) return std::nullopt;
    double v[4] = {};
    const char* p = svg.c_str() + at + 9;
    for (double& x : v) {
        char* end = nullptr;
        x = std::strtod(p, &end);
        if (end == p) return std::nullopt;
        p = end;
        while (*p == ' ' || *p == ',') ++p;
    }
    return Size{v[2], v[3]};
}

}  // namespace platform::view::internal
