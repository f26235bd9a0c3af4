#include "platform/view/HtmlRenderer.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "Css.hpp"
#include "Number.hpp"
#include "platform/Base64.hpp"
#include "platform/view/NodeData.hpp"

namespace platform::view {

namespace {

using internal::appendEscaped;
using internal::appendNumber;
using internal::css;
using internal::number;

// How the parent lays out the element: a flex column, a flex row, or layered in a grid cell.
enum class Flow : std::uint8_t { column, row, grid };

struct Fill {
    bool w = false;
    bool h = false;
};

// The size the renderer expects a node to get, to draw custom paths at their own proportions.
struct Ctx {
    double w = 0;
    double h = 0;
    std::optional<Color> tint;
};

const char* flexPosition(HorizontalPart p) {
    switch (p) {
        case HorizontalPart::leading: return "flex-start";
        case HorizontalPart::trailing: return "flex-end";
        default: return "center";
    }
}

const char* flexPosition(VerticalPart p) {
    switch (p) {
        case VerticalPart::top: return "flex-start";
        case VerticalPart::bottom: return "flex-end";
        default: return "center";
    }
}

const char* gridPosition(HorizontalPart p) {
    return p == HorizontalPart::leading ? "start" : (p == HorizontalPart::trailing ? "end" : "center");
}

const char* gridPosition(VerticalPart p) {
    return p == VerticalPart::top ? "start" : (p == VerticalPart::bottom ? "end" : "center");
}

std::string px(double v) { return number(v) + "px"; }

Fill fillOf(const Node& n, Kind parentKind);

Fill contentFill(const Node& n, Kind parentKind) {
    const NodeData& d = n.data();
    switch (d.kind) {
        case Kind::shape:
        case Kind::scrollView:
        case Kind::navigationStack:
        case Kind::asyncImage: return {true, true};
        case Kind::image: return d.as<ImageProps>()->resizable ? Fill{true, true} : Fill{};
        case Kind::toggle:
        case Kind::textField: return {true, false};
        case Kind::progress: return {d.as<ProgressProps>()->value.has_value(), false};
        case Kind::spacer: return {parentKind == Kind::hstack, parentKind == Kind::vstack};
        case Kind::divider: return {parentKind != Kind::hstack, parentKind == Kind::hstack};
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
        default: return {};
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

std::string placeStyle(Fill f, Flow flow) {
    std::string s;
    switch (flow) {
        case Flow::column:
            if (f.w) s += "align-self:stretch;";
            if (f.h) s += "flex:1 1 0;min-height:0;";
            break;
        case Flow::row:
            if (f.w) s += "flex:1 1 0;min-width:0;";
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
        case ShapeKind::roundedRectangle: return "border-radius:" + px(s.cornerRadius) + ";";
        case ShapeKind::circle:
        case ShapeKind::ellipse: return "border-radius:50%;";
        case ShapeKind::capsule: return "border-radius:9999px;";
        case ShapeKind::path: return "clip-path:path('" + s.pathIn({0, 0, ctx.w, ctx.h}).svgData() + "');";
        default: return {};
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

constexpr const char* styleSheet =
    "*{box-sizing:border-box;margin:0;padding:0}"
    "body{font:400 17px/1.25 system-ui,-apple-system,\"Liberation Sans\",\"DejaVu Sans\",sans-serif;color:#000}"
    ".root{display:flex;flex-direction:column;align-items:center;position:relative}"
    ".v,.l,.u,.p,.nav,.nc{display:flex;flex-direction:column}"
    ".h{display:flex;flex-direction:row}"
    ".z{display:grid}.z>*{grid-area:1/1}"
    ".v>*,.l>*,.h>*,.nc>*,.sv>*,.sheet>*{flex-shrink:0}.h>.t{flex-shrink:1}"
    ".d{position:absolute;inset:0;display:flex;flex-direction:column}"
    ".t{white-space:pre-line}"
    ".i{display:block}.i>svg{display:block}"
    ".b{all:unset;display:flex;flex-direction:column;align-items:stretch;cursor:pointer}"
    ".u,.p{flex:1 1 auto;align-items:center;justify-content:center}"
    ".b:active>.u{display:none}.b:not(:active)>.p{display:none}"
    ".sv{display:flex;flex-direction:column;align-items:center;overflow:auto}"
    ".sv.ni{scrollbar-width:none}.sv.ni::-webkit-scrollbar{display:none}"
    ".dv{background:rgba(60,60,67,.29);min-width:1px;min-height:1px}"
    ".pg{display:block;border-radius:50%;border:2.5px solid currentColor;border-right-color:transparent;"
    "animation:spin 1s linear infinite}@keyframes spin{to{transform:rotate(360deg)}}"
    ".pb{display:block;height:4px;border-radius:2px;background:rgba(120,120,128,.2);overflow:hidden}"
    ".pb>span{display:block;height:100%}"
    ".tg{display:flex;align-items:center;gap:8px}.tg>:first-child{flex:1 1 auto}"
    ".sw{display:block;width:51px;height:31px;border-radius:16px;background:rgba(120,120,128,.16);position:relative}"
    ".sw::after{content:'';position:absolute;top:2px;left:2px;width:27px;height:27px;border-radius:50%;"
    "background:#fff;box-shadow:0 2px 4px rgba(0,0,0,.2)}.sw.on::after{left:22px}"
    ".tf{font:inherit;color:inherit;border:0;background:transparent;outline:none;min-width:0}"
    ".nb{display:grid;grid-template-columns:1fr auto 1fr;align-items:center;min-height:44px;padding:0 16px;"
    "align-self:stretch}.nb>:last-child{justify-self:end}.nt{font-weight:600}"
    ".scrim{position:fixed;left:0;top:0;background:rgba(0,0,0,.2)}"
    ".sheet{position:fixed;left:0;bottom:0;background:#fff;border-radius:12px 12px 0 0;display:flex;"
    "flex-direction:column;align-items:center;overflow:auto}"
    ".grab{width:36px;height:5px;border-radius:3px;background:rgba(60,60,67,.3);margin:5px auto 0}";

class Renderer {
public:
    explicit Renderer(const HtmlOptions& options) : opt_(options) {}

    std::string page(const Node& root) {
        out_.reserve(16 * 1024);
        out_ += "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><meta name=\"viewport\" "
                "content=\"width=device-width,initial-scale=1\"><title>";
        appendEscaped(out_, opt_.title);
        out_ += "</title><style>";
        out_ += styleSheet;
        out_ += "body{background:" + css(opt_.pageBackground) + "}";
        out_ += ".root{width:" + px(opt_.width) + ";min-height:" + px(opt_.height) + "}";
        out_ += ".scrim,.sheet{width:" + px(opt_.width) + "}.scrim{height:" + px(opt_.height) + "}";
        out_ += "</style></head><body><div class=\"root\">\n";
        node(root, Flow::column, Kind::vstack, Ctx{opt_.width, opt_.height, std::nullopt});
        out_ += "\n</div></body></html>\n";
        return std::move(out_);
    }

private:
    void openTag(const char* tag, const char* cls, const std::string& style, const std::string& attrs = {}) {
        out_ += '<';
        out_ += tag;
        if (cls != nullptr && *cls != 0) {
            out_ += " class=\"";
            out_ += cls;
            out_ += '"';
        }
        if (!style.empty()) {
            out_ += " style=\"";
            appendEscaped(out_, style);
            out_ += '"';
        }
        out_ += attrs;
        out_ += '>';
    }

    static void attr(std::string& out, const char* name, const std::string& value) {
        if (value.empty()) return;
        out += ' ';
        out += name;
        out += "=\"";
        appendEscaped(out, value);
        out += '"';
    }

    static std::string identity(const NodeData& d) {
        std::string a;
        attr(a, "data-id", d.accessibilityId);
        attr(a, "aria-label", d.accessibilityLabel);
        attr(a, "data-view", d.viewType);
        if (d.transition) attr(a, "data-transition", d.transition->name);
        return a;
    }

    static std::string environment(const NodeData& d) {
        std::string s;
        if (d.env.font) s += internal::cssFont(*d.env.font) + ";";
        if (d.env.foreground) s += "color:" + css(*d.env.foreground) + ";";
        if (d.env.colorScheme) s += d.env.colorScheme == ColorScheme::dark ? "color-scheme:dark;" : "color-scheme:light;";
        if (d.env.disabled || !d.hitTesting) s += "pointer-events:none;";
        return s;
    }

    static std::string layerStyle(const Layer& layer, Ctx& ctx) {
        std::string s;
        if (layer.frame) {
            const Frame& f = *layer.frame;
            auto side = [&](const char* name, const std::optional<double>& v) {
                if (v && std::isfinite(*v)) s += std::string(name) + ":" + px(*v) + ";";
            };
            side("width", f.width);
            side("height", f.height);
            side("min-width", f.minWidth);
            side("max-width", f.maxWidth);
            side("min-height", f.minHeight);
            side("max-height", f.maxHeight);
            s += "justify-content:";
            s += flexPosition(verticalPart(f.alignment));
            s += ";align-items:";
            s += flexPosition(horizontalPart(f.alignment));
            s += ';';
            if (f.width) ctx.w = *f.width;
            if (f.maxWidth && std::isfinite(*f.maxWidth)) ctx.w = std::min(ctx.w, *f.maxWidth);
            if (f.minWidth) ctx.w = std::max(ctx.w, *f.minWidth);
            if (f.height) ctx.h = *f.height;
            if (f.maxHeight && std::isfinite(*f.maxHeight)) ctx.h = std::min(ctx.h, *f.maxHeight);
            if (f.minHeight) ctx.h = std::max(ctx.h, *f.minHeight);
        }
        if (!layer.padding.isZero()) {
            const EdgeInsets& p = layer.padding;
            s += "padding:" + px(p.top) + " " + px(p.trailing) + " " + px(p.bottom) + " " + px(p.leading) + ";";
        }
        if (!layer.backgrounds.empty() || !layer.overlays.empty()) s += "position:relative;isolation:isolate;";
        if (layer.clip) {
            s += "overflow:hidden;";
            if (const auto* shape = layer.clip->data().as<ShapeProps>()) s += cornerStyle(*shape, ctx);
        }
        if (layer.opacity != 1) s += "opacity:" + number(layer.opacity) + ";";
        if (layer.blur != 0) s += "filter:blur(" + px(layer.blur) + ");";
        return s;
    }

    void decoration(const Decoration& deco, bool behind, const Ctx& ctx) {
        std::string style = behind ? "z-index:-1;" : "";
        style += "justify-content:";
        style += flexPosition(verticalPart(deco.alignment));
        style += ";align-items:";
        style += flexPosition(horizontalPart(deco.alignment));
        openTag("div", "d", style);
        node(deco.content, Flow::column, Kind::group, ctx);
        out_ += "</div>";
    }

    void node(const Node& n, Flow flow, Kind parentKind, Ctx ctx) {
        if (n.isEmpty()) return;
        const NodeData& d = n.data();
        if (d.env.tint) ctx.tint = d.env.tint;

        std::vector<Fill> levels{contentFill(n, parentKind)};
        for (const Layer& layer : d.layers) levels.push_back(applyFrame(levels.back(), layer.frame));

        const std::size_t count = d.layers.size();
        std::vector<Ctx> decorationCtx(count);
        Flow inner = flow;
        for (std::size_t i = count; i-- > 0;) {
            const Layer& layer = d.layers[i];
            std::string style = placeStyle(levels[i + 1], inner);
            if (i == count - 1) style = environment(d) + style;
            Ctx afterFrame = ctx;
            std::string own = layerStyle(layer, afterFrame);
            decorationCtx[i] = afterFrame;
            openTag("div", "l", style + own, i == count - 1 ? identity(d) : std::string{});
            for (auto bg = layer.backgrounds.rbegin(); bg != layer.backgrounds.rend(); ++bg) {
                decoration(*bg, true, afterFrame);
            }
            ctx = afterFrame;
            ctx.w = std::max(0.0, ctx.w - layer.padding.leading - layer.padding.trailing);
            ctx.h = std::max(0.0, ctx.h - layer.padding.top - layer.padding.bottom);
            inner = Flow::column;
        }

        std::string style = placeStyle(levels[0], inner);
        if (count == 0) style = environment(d) + style;
        content(n, style, count == 0 ? identity(d) : std::string{}, ctx);

        for (std::size_t i = 0; i < count; ++i) {
            for (const Decoration& overlay : d.layers[i].overlays) decoration(overlay, false, decorationCtx[i]);
            out_ += "</div>";
        }
        for (const Presentation& p : d.presentations) {
            if (p.type == Presentation::Type::sheet && p.isPresented) sheet(p);
        }
    }

    void children(const NodeData& d, Flow flow, const Ctx& ctx) {
        for (const Node& child : d.children) node(child, flow, d.kind, ctx);
    }

    void content(const Node& n, std::string style, const std::string& attrs, const Ctx& ctx) {
        const NodeData& d = n.data();
        switch (d.kind) {
            case Kind::vstack: {
                const auto& s = *d.as<StackProps>();
                style += "align-items:";
                style += flexPosition(horizontalPart(s.alignment));
                style += ";gap:" + px(s.spacing.value_or(8)) + ";";
                openTag("div", "v", style, attrs);
                children(d, Flow::column, ctx);
                out_ += "</div>";
                return;
            }
            case Kind::hstack: {
                const auto& s = *d.as<StackProps>();
                style += "align-items:";
                style += flexPosition(verticalPart(s.alignment));
                style += ";gap:" + px(s.spacing.value_or(8)) + ";";
                openTag("div", "h", style, attrs);
                children(d, Flow::row, ctx);
                out_ += "</div>";
                return;
            }
            case Kind::zstack:
            case Kind::group: {
                Alignment a = d.kind == Kind::zstack ? d.as<StackProps>()->alignment : Alignment::center;
                style += "justify-items:";
                style += gridPosition(horizontalPart(a));
                style += ";align-items:";
                style += gridPosition(verticalPart(a));
                style += ';';
                openTag("div", "z", style, attrs);
                children(d, Flow::grid, ctx);
                out_ += "</div>";
                return;
            }
            case Kind::text: return text(*d.as<TextProps>(), style, attrs);
            case Kind::image: return image(*d.as<ImageProps>(), style, attrs);
            case Kind::asyncImage: {
                const auto& a = *d.as<AsyncImageProps>();
                std::string more = attrs;
                attr(more, "data-url", a.url);
                openTag("div", "v", style + "align-items:stretch;", more);
                node(a.phase == LoadPhase::loaded ? a.content : a.placeholder, Flow::column, Kind::group, ctx);
                out_ += "</div>";
                return;
            }
            case Kind::button: return button(d, style, attrs, ctx);
            case Kind::toggle: {
                const auto& t = *d.as<ToggleProps>();
                openTag("label", "tg", style, attrs);
                if (!d.children.empty()) node(d.children.front(), Flow::row, Kind::hstack, ctx);
                Color tint = ctx.tint.value_or(Color::rgb(52 / 255.0, 199 / 255.0, 89 / 255.0));
                openTag("span", t.isOn ? "sw on" : "sw", t.isOn ? "background:" + css(tint) : std::string{});
                out_ += "</span></label>";
                return;
            }
            case Kind::textField: {
                const auto& t = *d.as<TextFieldProps>();
                std::string more = attrs;
                attr(more, "placeholder", t.placeholder);
                attr(more, "value", t.text);
                openTag("input", "tf", style, " type=\"text\"" + more);
                return;
            }
            case Kind::scrollView: {
                const auto& s = *d.as<ScrollProps>();
                std::string more = attrs;
                if (d.on.refresh) more += " data-refreshable";
                style += s.axes == Axis::horizontal ? "flex-direction:row;" : "";
                openTag("div", s.showsIndicators ? "sv" : "sv ni", style, more);
                children(d, s.axes == Axis::horizontal ? Flow::row : Flow::column, ctx);
                out_ += "</div>";
                return;
            }
            case Kind::spacer: {
                if (auto min = d.as<SpacerProps>()->minLength) style += "min-width:" + px(*min) + ";min-height:" + px(*min) + ";";
                openTag("div", "", style, attrs);
                out_ += "</div>";
                return;
            }
            case Kind::divider:
                openTag("div", "dv", style, attrs);
                out_ += "</div>";
                return;
            case Kind::progress: return progress(*d.as<ProgressProps>(), style, attrs, ctx);
            case Kind::navigationStack: return navigation(d, style, attrs, ctx);
            case Kind::shape: return shape(*d.as<ShapeProps>(), style, attrs, ctx);
            case Kind::empty: return;
        }
    }

    void text(const TextProps& t, std::string style, const std::string& attrs) {
        if (t.multilineAlignment != HorizontalPart::leading) {
            style += t.multilineAlignment == HorizontalPart::center ? "text-align:center;" : "text-align:right;";
        }
        if (t.lineLimit) {
            style += fmt::format("display:-webkit-box;-webkit-box-orient:vertical;-webkit-line-clamp:{};overflow:hidden;",
                                 *t.lineLimit);
        }
        openTag("span", "t", style, attrs);
        for (const TextRun& run : t.runs) {
            if (!run.color && !run.font) {
                appendEscaped(out_, run.text);
                continue;
            }
            std::string runStyle;
            if (run.font) runStyle += internal::cssFont(*run.font) + ";";
            if (run.color) runStyle += "color:" + css(*run.color) + ";";
            openTag("span", "", runStyle);
            appendEscaped(out_, run.text);
            out_ += "</span>";
        }
        out_ += "</span>";
    }

    void image(const ImageProps& img, std::string style, const std::string& attrs) {
        const bool fit = img.contentMode == ContentMode::fit;
        const bool fillMode = img.contentMode == ContentMode::fill;
        if (img.source.type == ImageSource::Type::url) {
            std::string more = attrs;
            attr(more, "src", img.source.name);
            more += " alt=\"\"";
            if (img.resizable) style += fit ? "object-fit:contain;" : (fillMode ? "object-fit:cover;" : "object-fit:fill;");
            openTag("img", "i", style, more);
            return;
        }
        std::optional<std::string> svg;
        if (img.source.type == ImageSource::Type::system) {
            if (auto symbol = internal::systemSymbolSvg(img.source.name)) svg = std::string(*symbol);
            if (!img.resizable) style += "width:1em;height:1em;";
        } else if (opt_.assets) {
            svg = opt_.assets(img.source);
        }
        if (!svg) {
            std::string more = attrs;
            attr(more, "title", img.source.name);
            openTag("span", "i", style + "min-width:16px;min-height:16px;border:1px dashed currentColor;", more);
            out_ += "</span>";
            return;
        }
        if (auto prolog = svg->find("<svg"); prolog != std::string::npos) svg->erase(0, prolog);
        if (!img.resizable && img.source.type == ImageSource::Type::asset) {
            if (auto size = viewBoxSize(*svg)) style += "width:" + px(size->width) + ";height:" + px(size->height) + ";";
        }
        if (img.renderingMode == RenderingMode::templated) {
            const char* size = !img.resizable ? "100% 100%" : (fit ? "contain" : (fillMode ? "cover" : "100% 100%"));
            std::string mask = "url('data:image/svg+xml;base64," + platform::base64Encode(*svg) + "') center/" + size +
                               " no-repeat";
            style += "-webkit-mask:" + mask + ";mask:" + mask + ";background-color:currentColor;";
            openTag("span", "i", style, attrs);
            out_ += "</span>";
            return;
        }
        openTag("span", "i", style, attrs);
        const char* aspect = !img.resizable ? "xMidYMid meet" : (fit ? "xMidYMid meet" : (fillMode ? "xMidYMid slice" : "none"));
        if (img.source.type == ImageSource::Type::asset) {
            svg->insert(4, std::string(" width=\"100%\" height=\"100%\" preserveAspectRatio=\"") + aspect + "\"");
        }
        out_ += *svg;
        out_ += "</span>";
    }

    void button(const NodeData& d, std::string style, std::string attrs, const Ctx& ctx) {
        const auto& b = *d.as<ButtonProps>();
        if (d.env.disabled) attrs += " disabled";
        openTag("button", "b", style, " type=\"button\"" + attrs);
        openTag("span", "u", {});
        if (!d.children.empty()) node(d.children.front(), Flow::column, Kind::button, ctx);
        out_ += "</span>";
        if (b.style && !b.pressed) {
            openTag("span", "p", {});
            node((*b.style)(b.label, true), Flow::column, Kind::button, ctx);
            out_ += "</span>";
        }
        out_ += "</button>";
    }

    void progress(const ProgressProps& p, std::string style, const std::string& attrs, const Ctx& ctx) {
        Color tint = ctx.tint.value_or(Color::rgb(142 / 255.0, 142 / 255.0, 147 / 255.0));
        if (p.value) {
            openTag("span", "pb", style, attrs);
            openTag("span", "", "width:" + number(std::clamp(*p.value, 0.0, 1.0) * 100) + "%;background:" + css(tint));
            out_ += "</span></span>";
            return;
        }
        double size = p.controlSize == ControlSize::large ? 37 : (p.controlSize == ControlSize::regular ? 20 : 14);
        style += "width:" + px(size) + ";height:" + px(size) + ";color:" + css(tint) + ";";
        openTag("span", "pg", style, attrs + " role=\"progressbar\"");
        out_ += "</span>";
    }

    void shape(const ShapeProps& s, std::string style, const std::string& attrs, const Ctx& ctx) {
        if (s.shape == ShapeKind::path) {
            Path path = s.pathIn({0, 0, ctx.w, ctx.h});
            openTag("svg", "", style + "overflow:visible;display:block;",
                    " viewBox=\"0 0 " + number(ctx.w) + " " + number(ctx.h) + "\" preserveAspectRatio=\"none\"" + attrs);
            out_ += "<path d=\"" + path.svgData() + "\"";
            std::string pathStyle;
            if (s.fill) {
                pathStyle += "fill:" + css(internal::firstColor(*s.fill)) + ";";
            } else if (!s.stroke) {
                pathStyle += "fill:currentColor;";
            } else {
                pathStyle += "fill:none;";
            }
            if (s.stroke) {
                pathStyle += "stroke:" + css(internal::firstColor(s.stroke->paint)) + ";stroke-width:" +
                             number(s.stroke->lineWidth) + ";stroke-miterlimit:" + number(s.stroke->miterLimit) + ";";
            }
            out_ += " style=\"" + pathStyle + "\" vector-effect=\"non-scaling-stroke\"/></svg>";
            return;
        }
        style += cornerStyle(s, ctx);
        if (s.fill) {
            style += "background:" + css(*s.fill) + ";";
        } else if (!s.stroke) {
            style += "background:currentColor;";
        }
        if (s.stroke) {
            std::string c = css(internal::firstColor(s.stroke->paint));
            std::string half = px(s.stroke->lineWidth / 2);
            // A stroke is centred on the outline: half outside, half inside.
            style += "box-shadow:0 0 0 " + half + " " + c + ",inset 0 0 0 " + half + " " + c + ";";
        }
        openTag("div", "", style, attrs);
        out_ += "</div>";
    }

    // The first presented push under `n`, not looking into sheets or nested stacks.
    static const Presentation* presentedPush(const Node& n) {
        const NodeData& d = n.data();
        for (const Presentation& p : d.presentations) {
            if (p.type == Presentation::Type::push && p.isPresented) return &p;
        }
        const Presentation* found = nullptr;
        forEachShownChild(n, [&](const Node& child) {
            if (found != nullptr || child.kind() == Kind::navigationStack) return;
            for (const Presentation& p : d.presentations) {
                if (p.content.sharesDataWith(child)) return;
            }
            found = presentedPush(child);
        });
        return found;
    }

    static const NavigationItem* navigationItem(const Node& n) {
        const NodeData& d = n.data();
        if (d.navigation && (d.navigation->title || d.navigation->leading || d.navigation->trailing)) {
            return &*d.navigation;
        }
        const NavigationItem* found = nullptr;
        for (const Node& child : d.children) {
            if (found == nullptr && child.kind() != Kind::navigationStack) found = navigationItem(child);
        }
        return found;
    }

    void navigation(const NodeData& d, const std::string& style, const std::string& attrs, const Ctx& ctx) {
        if (d.children.empty()) return;
        Node shown = d.children.front();
        bool pushed = false;
        while (const Presentation* p = presentedPush(shown)) {
            shown = p->content;
            pushed = true;
        }
        const NavigationItem* item = navigationItem(shown);
        openTag("div", "nav", style, attrs);
        out_ += "<div class=\"nb\"><span>";
        if (pushed) {
            out_ += "<span class=\"i\" style=\"width:22px;height:22px\" data-back>";
            out_ += *internal::systemSymbolSvg("chevron.left");
            out_ += "</span>";
        } else if (item != nullptr && item->leading) {
            node(*item->leading, Flow::row, Kind::hstack, ctx);
        }
        out_ += "</span><span class=\"nt\">";
        if (item != nullptr && item->title) appendEscaped(out_, *item->title);
        out_ += "</span><span>";
        if (item != nullptr && item->trailing) node(*item->trailing, Flow::row, Kind::hstack, ctx);
        out_ += "</span></div>";
        openTag("div", "nc", "flex:1 1 auto;align-self:stretch;align-items:center;");
        node(shown, Flow::column, Kind::vstack, Ctx{ctx.w, std::max(0.0, ctx.h - 44), ctx.tint});
        out_ += "</div></div>";
    }

    void sheet(const Presentation& p) {
        double height = opt_.height;
        for (const Detent& detent : p.options.detents) {
            double h = opt_.height;
            switch (detent.type) {
                case Detent::Type::medium: h = opt_.height * 0.5; break;
                case Detent::Type::large: h = opt_.height - 54; break;
                case Detent::Type::fraction: h = opt_.height * detent.value; break;
                case Detent::Type::height: h = detent.value; break;
            }
            height = std::min(height, h);
        }
        ++sheetDepth_;
        std::string z = "z-index:" + std::to_string(sheetDepth_ * 10) + ";";
        openTag("div", "scrim", z);
        out_ += "</div>";
        openTag("div", "sheet", z + "height:" + px(height) + ";");
        if (p.options.dragIndicatorVisible) out_ += "<div class=\"grab\"></div>";
        node(p.content, Flow::column, Kind::vstack, Ctx{opt_.width, height, std::nullopt});
        out_ += "</div>";
        --sheetDepth_;
    }

    const HtmlOptions& opt_;
    std::string out_;
    int sheetDepth_ = 0;
};

}  // namespace

std::string renderHtml(const Node& root, const HtmlOptions& options) { return Renderer(options).page(root); }

}  // namespace platform::view
