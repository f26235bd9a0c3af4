#include <fmt/format.h>

#include <algorithm>
#include <string>

#include "Css.hpp"
#include "HtmlPage.hpp"
#include "Number.hpp"
#include "platform/Base64.hpp"

namespace platform::view::internal {

void Renderer::text(const TextProps& t, std::string style, const std::string& attrs) {
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

void Renderer::image(const ImageProps& img, std::string style, const std::string& attrs) {
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
        std::string mask =
            "url('data:image/svg+xml;base64," + platform::base64Encode(*svg) + "') center/" + size + " no-repeat";
        style += "-webkit-mask:" + mask + ";mask:" + mask + ";background-color:currentColor;";
        openTag("span", "i", style, attrs);
        out_ += "</span>";
        return;
    }
    openTag("span", "i", style, attrs);
    const char* aspect =
        !img.resizable ? "xMidYMid meet" : (fit ? "xMidYMid meet" : (fillMode ? "xMidYMid slice" : "none"));
    if (img.source.type == ImageSource::Type::asset) {
        svg->insert(4, std::string(" width=\"100%\" height=\"100%\" preserveAspectRatio=\"") + aspect + "\"");
    }
    out_ += *svg;
    out_ += "</span>";
}

void Renderer::button(const NodeData& d, std::string style, std::string attrs, const Ctx& ctx) {
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

void Renderer::progress(const ProgressProps& p, std::string style, const std::string& attrs, const Ctx& ctx) {
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

void Renderer::shape(const ShapeProps& s, std::string style, const std::string& attrs, const Ctx& ctx) {
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
            pathStyle += "stroke:" + css(internal::firstColor(s.stroke->paint)) +
                         ";stroke-width:" + number(s.stroke->lineWidth) +
                         ";stroke-miterlimit:" + number(s.stroke->miterLimit) + ";";
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
const Presentation* Renderer::presentedPush(const Node& n) {
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

const NavigationItem* Renderer::navigationItem(const Node& n) {
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

void Renderer::navigation(const NodeData& d, const std::string& style, const std::string& attrs, const Ctx& ctx) {
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

void Renderer::sheet(const Presentation& p) {
    double height = opt_.height;
    for (const Detent& detent : p.options.detents) {
        double h = opt_.height;
        switch (detent.type) {
            case Detent::Type::medium:
                h = opt_.height * 0.5;
                break;
            case Detent::Type::large:
                h = opt_.height - 54;
                break;
            case Detent::Type::fraction:
                h = opt_.height * detent.value;
                break;
            case Detent::Type::height:
                h = detent.value;
                break;
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
}  // namespace platform::view::internal
