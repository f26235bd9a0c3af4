#include "platform/view/Inspect.hpp"

#include <utility>

namespace platform::view {

Query::Query(const char* text) : Query(by::text(text)) {}
Query::Query(const std::string& text) : Query(by::text(text)) {}

namespace by {

Query text(std::string text) {
    std::string description = "text \"" + text + "\"";
    return {std::move(description), [text = std::move(text)](const Node& n) {
                const auto* t = n->as<TextProps>();
                return t != nullptr && t->plain() == text;
            }};
}

Query textContaining(std::string part) {
    std::string description = "text containing \"" + part + "\"";
    return {std::move(description), [part = std::move(part)](const Node& n) {
                const auto* t = n->as<TextProps>();
                return t != nullptr && t->plain().find(part) != std::string::npos;
            }};
}

Query id(std::string accessibilityId) {
    std::string description = "id #" + accessibilityId;
    return {std::move(description),
            [id = std::move(accessibilityId)](const Node& n) { return n->accessibilityId == id; }};
}

Query label(std::string accessibilityLabel) {
    std::string description = "label \"" + accessibilityLabel + "\"";
    return {std::move(description),
            [label = std::move(accessibilityLabel)](const Node& n) { return n->accessibilityLabel == label; }};
}

Query kind(Kind kind) {
    return {std::string("kind ") + kindName(kind), [kind](const Node& n) { return n.kind() == kind; }};
}

Query type(std::string viewType) {
    std::string description = "type " + viewType;
    return {std::move(description), [type = std::move(viewType)](const Node& n) { return n->viewType == type; }};
}

}  // namespace by

void ViewRef::walk(const Query& query, const std::function<bool(const ViewRef&)>& onMatch) const {
    // Returns false to stop.
    std::function<bool(ViewRef&)> visit = [&](ViewRef& at) -> bool {
        if (query.matches(at.node()) && !onMatch(at)) return false;
        bool go = true;
        std::size_t index = 0;
        Node current = at.node();
        forEachShownChild(current, [&](const Node& child) {
            if (!go || child.isEmpty()) return;
            at.path_.push_back(child);
            at.indices_.push_back(index++);
            go = visit(at);
            at.path_.pop_back();
            at.indices_.pop_back();
        });
        return go;
    };
    ViewRef cursor = *this;
    visit(cursor);
}

std::optional<ViewRef> ViewRef::tryFind(const Query& query) const {
    std::optional<ViewRef> found;
    walk(query, [&](const ViewRef& match) {
        found = match;
        return false;
    });
    return found;
}

ViewRef ViewRef::find(const Query& query) const {
    if (auto found = tryFind(query)) return *found;
    throw InspectError("no node matches " + query.description + " in:\n" + describe(node()));
}

std::vector<ViewRef> ViewRef::findAll(const Query& query) const {
    std::vector<ViewRef> all;
    walk(query, [&](const ViewRef& match) {
        all.push_back(match);
        return true;
    });
    return all;
}

std::size_t ViewRef::count(const Query& query) const {
    std::size_t n = 0;
    walk(query, [&](const ViewRef&) {
        ++n;
        return true;
    });
    return n;
}

std::optional<ViewRef> ViewRef::parent() const {
    if (path_.size() < 2) return std::nullopt;
    ViewRef up = *this;
    up.path_.pop_back();
    up.indices_.pop_back();
    return up;
}

std::vector<ViewRef> ViewRef::children() const {
    std::vector<ViewRef> all;
    forEachShownChild(node(), [&](const Node& child) {
        if (child.isEmpty()) return;
        ViewRef down = *this;
        down.path_.push_back(child);
        down.indices_.push_back(all.size());
        all.push_back(std::move(down));
    });
    return all;
}

std::string ViewRef::path() const {
    std::string text;
    for (std::size_t index : indices_) {
        if (!text.empty()) text += '/';
        text += std::to_string(index);
    }
    return text;
}

std::optional<ViewRef> ViewRef::at(std::string_view path) const {
    ViewRef cursor = *this;
    while (!path.empty()) {
        const std::size_t slash = path.find('/');
        const std::string_view step = path.substr(0, slash);
        path = slash == std::string_view::npos ? std::string_view{} : path.substr(slash + 1);
        std::size_t index = 0;
        if (step.empty() || step.size() > 9) return std::nullopt;
        for (char c : step) {
            if (c < '0' || c > '9') return std::nullopt;
            index = index * 10 + static_cast<std::size_t>(c - '0');
        }
        auto below = cursor.children();
        if (index >= below.size()) return std::nullopt;
        cursor = std::move(below[index]);
    }
    return cursor;
}

ViewRef ViewRef::ancestor(const Query& query) const {
    ViewRef up = *this;
    while (up.path_.size() > 1) {
        up.path_.pop_back();
        up.indices_.pop_back();
        if (query.matches(up.node())) return up;
    }
    throw InspectError("no node above matches " + query.description);
}

std::vector<std::string> ViewRef::texts() const {
    std::vector<std::string> all;
    walk(by::kind(Kind::text), [&](const ViewRef& match) {
        all.push_back(match->as<TextProps>()->plain());
        return true;
    });
    return all;
}

std::string ViewRef::text() const {
    if (const auto* t = node()->as<TextProps>()) return t->plain();
    std::string joined;
    for (const std::string& t : texts()) {
        if (!joined.empty()) joined += ' ';
        joined += t;
    }
    return joined;
}

EdgeInsets ViewRef::padding() const {
    EdgeInsets total;
    for (const Layer& layer : node()->layers) total += layer.padding;
    return total;
}

std::optional<Frame> ViewRef::frame() const {
    for (const Layer& layer : node()->layers) {
        if (layer.frame) return layer.frame;
    }
    return std::nullopt;
}

namespace {

template <class T>
std::optional<T> nearest(const std::vector<Node>& path, std::optional<T> Environment::*member) {
    for (auto it = path.rbegin(); it != path.rend(); ++it) {
        if (const auto& value = (*it)->env.*member) return value;
    }
    return std::nullopt;
}

}  // namespace

std::optional<Font> ViewRef::font() const {
    return nearest(path_, &Environment::font);
}
std::optional<Color> ViewRef::foreground() const {
    return nearest(path_, &Environment::foreground);
}
std::optional<Color> ViewRef::tintColor() const {
    return nearest(path_, &Environment::tint);
}

bool ViewRef::isDisabled() const {
    for (const Node& n : path_) {
        if (n->env.disabled) return true;
    }
    return false;
}

double ViewRef::opacity() const {
    double value = 1;
    for (const Layer& layer : node()->layers) value *= layer.opacity;
    return value;
}

bool ViewRef::tap() const {
    for (const Node& n : path_) {
        if (!n->hitTesting) return false;
    }
    for (std::size_t i = path_.size(); i-- > 0;) {
        if (!path_[i]->on.tap) continue;
        for (std::size_t j = 0; j <= i; ++j) {
            if (path_[j]->env.disabled) return false;
        }
        path_[i]->on.tap();
        return true;
    }
    return false;
}

bool ViewRef::toggle() const {
    const auto* props = node()->as<ToggleProps>();
    if (props == nullptr || !node()->on.toggle || isDisabled()) return false;
    node()->on.toggle(!props->isOn);
    return true;
}

bool ViewRef::typeText(const std::string& text) const {
    if (!node()->on.textChange || isDisabled()) return false;
    node()->on.textChange(text);
    return true;
}

bool ViewRef::refresh(std::function<void()> done) const {
    if (!node()->on.refresh) return false;
    node()->on.refresh(done ? std::move(done) : [] {});
    return true;
}

void ViewRef::appear() const {
    walk(Query("appear handler", [](const Node& n) { return static_cast<bool>(n->on.appear); }),
         [](const ViewRef& match) {
             match->on.appear();
             return true;
         });
}

bool ViewRef::dismiss() const {
    for (const Presentation& p : node()->presentations) {
        if (p.isPresented && p.onDismiss) {
            p.onDismiss();
            return true;
        }
    }
    return false;
}

namespace {

void outline(const Node& node, int depth, std::string& out) {
    const NodeData& d = node.data();
    out.append(static_cast<std::size_t>(depth) * 2, ' ');
    out += kindName(d.kind);
    if (!d.viewType.empty()) out += " [" + d.viewType + "]";
    if (const auto* t = d.as<TextProps>()) out += " \"" + t->plain() + "\"";
    if (const auto* i = d.as<ImageProps>()) out += " <" + i->source.name + ">";
    if (!d.accessibilityId.empty()) out += " #" + d.accessibilityId;
    if (d.env.disabled) out += " disabled";
    if (d.on.tap) out += " tap";
    out += '\n';
    forEachShownChild(node, [&](const Node& child) {
        if (!child.isEmpty()) outline(child, depth + 1, out);
    });
}

}  // namespace

std::string describe(const Node& root) {
    std::string out;
    outline(root, 0, out);
    return out;
}

}  // namespace platform::view
