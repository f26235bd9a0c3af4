#include "Css.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "Number.hpp"

namespace platform::view::internal {

void appendEscaped(std::string& out, std::string_view text) {
    // Most text has nothing to escape: copy the runs between special characters whole.
    std::size_t runStart = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char* entity = nullptr;
        switch (text[i]) {
            case '&':
                entity = "&amp;";
                break;
            case '<':
                entity = "&lt;";
                break;
            case '>':
                entity = "&gt;";
                break;
            case '"':
                entity = "&quot;";
                break;
            case '\'':
                entity = "&#39;";
                break;
            default:
                continue;
        }
        out.append(text.substr(runStart, i - runStart));
        out += entity;
        runStart = i + 1;
    }
    out.append(text.substr(runStart));
}

namespace {
int channel(double v) {
    return static_cast<int>(std::lround(std::clamp(v, 0.0, 1.0) * 255.0));
}
}  // namespace

std::string css(const Color& c) {
    if (c.alpha >= 1) return fmt::format("#{:02x}{:02x}{:02x}", channel(c.red), channel(c.green), channel(c.blue));
    return fmt::format("rgba({},{},{},{})", channel(c.red), channel(c.green), channel(c.blue),
                       number(std::clamp(c.alpha, 0.0, 1.0)));
}

namespace {

std::string direction(UnitPoint start, UnitPoint end) {
    double dx = end.x - start.x;
    double dy = end.y - start.y;
    auto side = [](double d, const char* negative, const char* positive) -> std::string {
        return d > 0 ? positive : (d < 0 ? negative : "");
    };
    // Keywords keep the gradient corner to corner whatever the box's aspect ratio.
    bool axisAligned = (dx == 0 || std::fabs(dx) == 1) && (dy == 0 || std::fabs(dy) == 1);
    if (axisAligned && (dx != 0 || dy != 0)) {
        std::string v = side(dy, "top", "bottom");
        std::string h = side(dx, "left", "right");
        return "to " + (v.empty() ? h : (h.empty() ? v : v + " " + h));
    }
    double degrees = std::atan2(dx, -dy) * 180.0 / 3.14159265358979323846;
    return number(degrees) + "deg";
}

}  // namespace

std::string css(const Paint& paint) {
    if (const auto* c = std::get_if<Color>(&paint)) return css(*c);
    const auto& g = std::get<LinearGradient>(paint);
    std::string out = "linear-gradient(" + direction(g.start, g.end);
    for (const Color& c : g.colors) out += "," + css(c);
    if (g.colors.size() == 1) out += "," + css(g.colors.front());
    return out + ")";
}

Color firstColor(const Paint& paint) {
    if (const auto* c = std::get_if<Color>(&paint)) return *c;
    const auto& g = std::get<LinearGradient>(paint);
    return g.colors.empty() ? Color::clear() : g.colors.front();
}

std::string cssTransition(const Animation& animation) {
    const char* curve = "ease";
    switch (animation.curve) {
        case Animation::Curve::standard:
            curve = "ease";
            break;
        case Animation::Curve::linear:
            curve = "linear";
            break;
        case Animation::Curve::easeIn:
            curve = "ease-in";
            break;
        case Animation::Curve::easeOut:
            curve = "ease-out";
            break;
        case Animation::Curve::easeInOut:
            curve = "ease-in-out";
            break;
        // A spring settles like a curve that overshoots a little.
        case Animation::Curve::spring:
            curve = "cubic-bezier(0.5,1.5,0.5,1)";
            break;
    }
    return "transition:all " + number(animation.duration) + "s " + curve + ";";
}

std::string cssFont(const Font& f) {
    std::string family;
    if (!f.family.empty()) {
        // The family is the host's text: it stays inside its CSS string whatever it holds.
        family = "\"";
        for (char c : f.family) {
            if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) continue;
            if (c == '"' || c == '\\') family += '\\';
            family += c;
        }
        family += "\",";
    }
    switch (f.design) {
        case FontDesign::serif:
            family += "\"Liberation Serif\",\"DejaVu Serif\",serif";
            break;
        case FontDesign::monospaced:
            family += "\"Liberation Mono\",\"DejaVu Sans Mono\",monospace";
            break;
        default:
            family += "system-ui,-apple-system,\"Liberation Sans\",\"DejaVu Sans\",sans-serif";
    }
    return fmt::format("font:{} {}px/1.25 {}", static_cast<int>(f.weight), number(f.size), family);
}

std::optional<std::string_view> systemSymbolSvg(std::string_view name) {
    // The namespace is needed where a symbol is drawn as a mask (template rendering): an SVG
    // read as an image shows nothing without it.
    static constexpr std::string_view head =
        R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 24 24" width="100%" height="100%" fill="none" )"
        R"(stroke="currentColor" stroke-width="2" )"
        R"(stroke-linecap="round" stroke-linejoin="round">)";
    static const std::array<std::pair<std::string_view, std::string>, 12> symbols = {{
        {"plus", std::string(head) + R"(<path d="M12 5v14M5 12h14"/></svg>)"},
        {"minus", std::string(head) + R"(<path d="M5 12h14"/></svg>)"},
        {"xmark", std::string(head) + R"(<path d="M6 6l12 12M18 6L6 18"/></svg>)"},
        {"checkmark", std::string(head) + R"(<path d="M5 12.5l4.5 4.5L19 7"/></svg>)"},
        {"chevron.left", std::string(head) + R"(<path d="M15 5l-7 7 7 7"/></svg>)"},
        {"chevron.right", std::string(head) + R"(<path d="M9 5l7 7-7 7"/></svg>)"},
        {"chevron.down", std::string(head) + R"(<path d="M5 9l7 7 7-7"/></svg>)"},
        {"chevron.up", std::string(head) + R"(<path d="M5 15l7-7 7 7"/></svg>)"},
        {"arrow.left", std::string(head) + R"(<path d="M19 12H5M11 6l-6 6 6 6"/></svg>)"},
        {"info.circle", std::string(head) + R"(<circle cx="12" cy="12" r="9"/><path d="M12 11v6M12 7.5v.5"/></svg>)"},
        {"exclamationmark.circle",
         std::string(head) + R"(<circle cx="12" cy="12" r="9"/><path d="M12 7v6M12 16.5v.5"/></svg>)"},
        {"creditcard",
         std::string(head) + R"(<rect x="3" y="6" width="18" height="12" rx="2"/><path d="M3 10h18"/></svg>)"},
    }};
    for (const auto& [key, svg] : symbols) {
        if (key == name) return svg;
    }
    return std::nullopt;
}

}  // namespace platform::view::internal
