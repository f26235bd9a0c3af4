#include "platform/view/HtmlRenderer.hpp"

#include <algorithm>
#include <cmath>
#include <vector>

#include "Css.hpp"
#include "HtmlPage.hpp"
#include "Number.hpp"
#include "platform/view/TextField.hpp"

namespace platform::view {

namespace internal {

namespace {

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

}  // namespace

void Renderer::page(const Node& tree) {
    out_ +=
        "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><meta name=\"viewport\" "
        "content=\"width=device-width,initial-scale=1\"><title>";
    appendEscaped(out_, opt_.title);
    out_ += "</title><style>";
    out_ += styleSheet;
    out_ += "body{background:" + css(opt_.pageBackground) + "}";
    out_ += ".root{width:" + px(opt_.width) + ";min-height:" + px(opt_.height) + "}";
    out_ += ".scrim,.sheet{width:" + px(opt_.width) + "}.scrim{height:" + px(opt_.height) + "}";
    out_ += "</style>";
    out_ += opt_.head;
    out_ += "</head><body>";
    out_ += opt_.bodyStart;
    root(tree);
    out_ += opt_.bodyEnd;
    out_ += "</body></html>\n";
}

void Renderer::root(const Node& tree) {
    out_ += "<div class=\"root\">\n";
    node(tree, Flow::column, Kind::vstack, Ctx{opt_.width, opt_.height, std::nullopt});
    out_ += "\n</div>";
}

void Renderer::openTag(const char* tag, const char* cls, const std::string& style, const std::string& attrs) {
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

void Renderer::attr(std::string& out, const char* name, const std::string& value) {
    if (value.empty()) return;
    out += ' ';
    out += name;
    out += "=\"";
    appendEscaped(out, value);
    out += '"';
}

std::string Renderer::identity(const NodeData& d) const {
    std::string a;
    if (opt_.nodeName) attr(a, "data-node", opt_.nodeName(d));
    attr(a, "data-id", d.accessibilityId);
    attr(a, "aria-label", d.accessibilityLabel);
    attr(a, "data-view", d.viewType);
    if (d.transition) attr(a, "data-transition", d.transition->name);
    std::string animates;
    for (const AnimationTag& tag : d.animations) animates += (animates.empty() ? "" : " ") + tag.value;
    attr(a, "data-animates", animates);
    return a;
}

std::string Renderer::environment(const NodeData& d) {
    std::string s;
    if (d.env.font) s += internal::cssFont(*d.env.font) + ";";
    if (d.env.foreground) s += "color:" + css(*d.env.foreground) + ";";
    if (d.env.colorScheme) s += d.env.colorScheme == ColorScheme::dark ? "color-scheme:dark;" : "color-scheme:light;";
    if (d.env.disabled || !d.hitTesting) s += "pointer-events:none;";
    if (!d.animations.empty()) s += internal::cssTransition(d.animations.back().animation);
    return s;
}

std::string Renderer::layerStyle(const Layer& layer, Ctx& ctx) {
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

void Renderer::decoration(const Decoration& deco, bool behind, const Ctx& ctx) {
    std::string style = behind ? "z-index:-1;" : "";
    style += "justify-content:";
    style += flexPosition(verticalPart(deco.alignment));
    style += ";align-items:";
    style += flexPosition(horizontalPart(deco.alignment));
    openTag("div", "d", style);
    node(deco.content, Flow::column, Kind::group, ctx);
    out_ += "</div>";
}

void Renderer::node(const Node& n, Flow flow, Kind parentKind, Ctx ctx) {
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
        std::string style = placeStyle(levels[i + 1], inner, false);
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

    std::string style = placeStyle(levels[0], inner, !isContainer(d.kind));
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

void Renderer::children(const NodeData& d, Flow flow, const Ctx& ctx) {
    for (const Node& child : d.children) node(child, flow, d.kind, ctx);
}

void Renderer::content(const Node& n, std::string style, const std::string& attrs, const Ctx& ctx) {
    const NodeData& d = n.data();
    switch (d.kind) {
        case Kind::vstack:
        case Kind::hstack: {
            const auto& s = *d.as<StackProps>();
            const bool row = d.kind == Kind::hstack;
            style += "align-items:";
            style += row ? flexPosition(verticalPart(s.alignment)) : flexPosition(horizontalPart(s.alignment));
            style += ";gap:" + px(s.spacing.value_or(8)) + ";";
            openTag("div", row ? "h" : "v", style, attrs);
            children(d, row ? Flow::row : Flow::column, ctx);
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
        case Kind::text:
            return text(*d.as<TextProps>(), style, attrs);
        case Kind::image:
            return image(*d.as<ImageProps>(), style, attrs);
        case Kind::asyncImage: {
            const auto& a = *d.as<AsyncImageProps>();
            std::string more = attrs;
            attr(more, "data-url", a.url);
            openTag("div", "v", style + "align-items:stretch;", more);
            node(a.phase == LoadPhase::loaded ? a.content : a.placeholder, Flow::column, Kind::group, ctx);
            out_ += "</div>";
            return;
        }
        case Kind::button:
            return button(d, style, attrs, ctx);
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
            attr(more, "value", t.field ? t.field->drawnText({}) : t.text);
            if (t.field) {
                // Where the caret is, so that a page that swaps the screen in can put it back.
                const platform::TextRange caret = t.field->selectedTextRange();
                attr(more, "data-caret", std::to_string(caret.location) + "," + std::to_string(caret.length));
                if (t.field->isFirstResponder()) more += " data-focused";
            }
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
            if (auto min = d.as<SpacerProps>()->minLength)
                style += "min-width:" + px(*min) + ";min-height:" + px(*min) + ";";
            openTag("div", "", style, attrs);
            out_ += "</div>";
            return;
        }
        case Kind::divider:
            openTag("div", "dv", style, attrs);
            out_ += "</div>";
            return;
        case Kind::progress:
            return progress(*d.as<ProgressProps>(), style, attrs, ctx);
        case Kind::navigationStack:
            return navigation(d, style, attrs, ctx);
        case Kind::shape:
            return shape(*d.as<ShapeProps>(), style, attrs, ctx);
        case Kind::empty:
            return;
    }
}
}  // namespace internal

std::string renderHtmlRoot(const Node& root, const HtmlOptions& options) {
    std::string out;
    internal::Renderer(options, out).root(root);
    return out;
}

std::string renderHtml(const Node& root, const HtmlOptions& options) {
    // A page is tens of kilobytes. Growing a fresh string to that size for every page cost more
    // than the rendering itself (reallocation copies, and the allocator handing the memory back
    // to the system after each page), so each thread keeps one buffer with its capacity and the
    // result is one exact-size copy. A nested call (an asset resolver that renders) gets its own.
    thread_local std::string scratch;
    thread_local bool busy = false;
    if (busy) {
        std::string own;
        internal::Renderer(options, own).page(root);
        return own;
    }
    busy = true;
    struct Release {
        ~Release() { busy = false; }
    } release;
    scratch.clear();
    internal::Renderer(options, scratch).page(root);
    return scratch;
}

}  // namespace platform::view
