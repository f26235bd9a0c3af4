#include "TreeJson.hpp"

#include <cmath>
#include <cstdio>
#include <string>

#include "platform/view/TextField.hpp"
#include "platform/view/View.hpp"

namespace tovi::screens {

using nlohmann::ordered_json;
using namespace platform::view;

namespace {

std::string hex(const Color& c) {
    auto byte = [](double v) { return static_cast<int>(std::lround(std::clamp(v, 0.0, 1.0) * 255)); };
    char text[10];
    std::snprintf(text, sizeof text, "#%02X%02X%02X%02X", byte(c.red), byte(c.green), byte(c.blue), byte(c.alpha));
    return text;
}

const char* designName(FontDesign design) {
    switch (design) {
        case FontDesign::standard:
            return "standard";
        case FontDesign::rounded:
            return "rounded";
        case FontDesign::serif:
            return "serif";
        case FontDesign::monospaced:
            return "monospaced";
    }
    return "standard";
}

const char* curveName(Animation::Curve curve) {
    switch (curve) {
        case Animation::Curve::standard:
            return "default";
        case Animation::Curve::linear:
            return "linear";
        case Animation::Curve::easeIn:
            return "easeIn";
        case Animation::Curve::easeOut:
            return "easeOut";
        case Animation::Curve::easeInOut:
            return "easeInOut";
        case Animation::Curve::spring:
            return "spring";
    }
    return "default";
}

ordered_json fontJson(const Font& font) {
    ordered_json f{{"size", font.size}, {"weight", static_cast<int>(font.weight)}, {"design", designName(font.design)}};
    if (!font.family.empty()) f["family"] = font.family;
    return f;
}

ordered_json frameJson(const Frame& frame) {
    ordered_json f = ordered_json::object();
    auto put = [&](const char* key, const std::optional<double>& v) {
        if (!v) return;
        if (std::isfinite(*v)) {
            f[key] = *v;
        } else {
            f[key] = "infinity";
        }
    };
    put("width", frame.width);
    put("height", frame.height);
    put("minWidth", frame.minWidth);
    put("maxWidth", frame.maxWidth);
    put("minHeight", frame.minHeight);
    put("maxHeight", frame.maxHeight);
    return f;
}

ordered_json actionsJson(const NodeData& d) {
    ordered_json actions = ordered_json::array();
    if (d.on.tap) actions.push_back("tap");
    if (d.on.toggle) actions.push_back("toggle");
    if (d.on.textChange || d.as<TextFieldProps>() != nullptr) actions.push_back("type");
    if (d.on.refresh) actions.push_back("refresh");
    for (const Presentation& p : d.presentations) {
        if (p.isPresented) actions.push_back(p.type == Presentation::Type::sheet ? "dismiss" : "back");
    }
    return actions;
}

}  // namespace

ordered_json treeJson(const ViewRef& ref) {
    const NodeData& d = ref.node().data();
    ordered_json node{{"path", ref.path()}, {"kind", kindName(d.kind)}};
    if (!d.viewType.empty()) node["type"] = d.viewType;
    if (const auto* text = d.as<TextProps>()) node["text"] = text->plain();
    if (!d.accessibilityId.empty()) node["id"] = d.accessibilityId;
    if (!d.accessibilityLabel.empty()) node["label"] = d.accessibilityLabel;
    if (d.env.font) node["font"] = fontJson(*d.env.font);
    if (d.env.foreground) node["color"] = hex(*d.env.foreground);
    if (auto frame = ref.frame()) node["frame"] = frameJson(*frame);
    if (const EdgeInsets p = ref.padding(); !p.isZero()) node["padding"] = {p.top, p.leading, p.bottom, p.trailing};
    if (ref.isDisabled()) node["enabled"] = false;
    if (auto actions = actionsJson(d); !actions.empty()) node["actions"] = std::move(actions);
    if (const auto* field = d.as<TextFieldProps>(); field != nullptr && field->field) {
        const platform::TextField& f = *field->field;
        node["field"] = {{"text", f.text().value_or("")},
                         {"caret", f.selectedTextRange().location},
                         {"selection", f.selectedTextRange().length},
                         {"focused", f.isFirstResponder()}};
    }
    if (!d.animations.empty()) {
        ordered_json tags = ordered_json::array();
        for (const AnimationTag& tag : d.animations) {
            tags.push_back({{"state", tag.value},
                            {"curve", curveName(tag.animation.curve)},
                            {"duration", tag.animation.duration}});
        }
        node["animations"] = std::move(tags);
    }
    ordered_json children = ordered_json::array();
    for (const ViewRef& child : ref.children()) children.push_back(treeJson(child));
    if (!children.empty()) node["children"] = std::move(children);
    return node;
}

}  // namespace tovi::screens
