#include "platform/view/Builders.hpp"

#include <algorithm>
#include <utility>

#include "ImagePhases.hpp"

namespace platform::view {

namespace {

Node make(Kind kind, Payload payload = {}, std::vector<Node> children = {}) {
    auto d = std::make_shared<NodeData>();
    d->kind = kind;
    d->payload = std::move(payload);
    std::erase_if(children, [](const Node& n) { return n.isEmpty(); });
    d->children = std::move(children);
    return Node(std::move(d));
}

Node shape(ShapeKind kind, double radius = 0, CornerStyle style = CornerStyle::circular) {
    return make(Kind::shape, ShapeProps{.shape = kind, .cornerRadius = radius, .cornerStyle = style});
}

}  // namespace

const char* kindName(Kind kind) {
    switch (kind) {
        case Kind::empty:
            return "empty";
        case Kind::group:
            return "group";
        case Kind::vstack:
            return "vstack";
        case Kind::hstack:
            return "hstack";
        case Kind::zstack:
            return "zstack";
        case Kind::text:
            return "text";
        case Kind::image:
            return "image";
        case Kind::asyncImage:
            return "asyncImage";
        case Kind::button:
            return "button";
        case Kind::toggle:
            return "toggle";
        case Kind::textField:
            return "textField";
        case Kind::scrollView:
            return "scrollView";
        case Kind::spacer:
            return "spacer";
        case Kind::divider:
            return "divider";
        case Kind::progress:
            return "progress";
        case Kind::navigationStack:
            return "navigationStack";
        case Kind::shape:
            return "shape";
    }
    return "?";
}

std::string TextProps::plain() const {
    std::string out;
    for (const TextRun& run : runs) out += run.text;
    return out;
}

Path ShapeProps::pathIn(Rect rect) const {
    return path ? (*path)(rect) : Path{};
}

Node VStack(std::vector<Node> children, Alignment alignment, std::optional<double> spacing) {
    return make(Kind::vstack, StackProps{alignment, spacing}, std::move(children));
}

Node HStack(std::vector<Node> children, Alignment alignment, std::optional<double> spacing) {
    return make(Kind::hstack, StackProps{alignment, spacing}, std::move(children));
}

Node ZStack(std::vector<Node> children, Alignment alignment) {
    return make(Kind::zstack, StackProps{alignment, std::nullopt}, std::move(children));
}

Node Group(std::vector<Node> children) {
    return make(Kind::group, {}, std::move(children));
}

Node ScrollView(Node content, Axis axes, bool showsIndicators) {
    return make(Kind::scrollView, ScrollProps{axes, showsIndicators}, {std::move(content)});
}

Node NavigationStack(Node root) {
    return make(Kind::navigationStack, {}, {std::move(root)});
}

Node Text(std::string text) {
    return make(Kind::text, TextProps{.runs = {TextRun{std::move(text), {}, {}}}});
}

Node Text(std::vector<TextRun> runs) {
    return make(Kind::text, TextProps{.runs = std::move(runs)});
}

Node AssetImage(std::string name, std::string bundle) {
    return make(Kind::image, ImageProps{.source = {ImageSource::Type::asset, std::move(name), std::move(bundle)}});
}

Node SystemImage(std::string name) {
    return make(Kind::image, ImageProps{.source = {ImageSource::Type::system, std::move(name), {}}});
}

Node UrlImage(std::string url) {
    return make(Kind::image, ImageProps{.source = {ImageSource::Type::url, std::move(url), {}}});
}

Node AsyncImage(std::string url, Node content, Node placeholder, double scale) {
    // Inside a screen host the phase is the host's: it loads the image and rebuilds on arrival.
    internal::ImagePhases* host = internal::currentImagePhases();
    const LoadPhase phase = host != nullptr ? host->phaseFor(url) : LoadPhase::loading;
    return make(Kind::asyncImage,
                AsyncImageProps{std::move(url), scale, phase, std::move(content), std::move(placeholder)});
}

Node Button(Node label, std::function<void()> action) {
    Node body = label;
    Node button = make(Kind::button, ButtonProps{std::move(label), nullptr, false}, {std::move(body)});
    return button.onTapGesture(std::move(action));
}

Node Button(std::string title, std::function<void()> action) {
    return Button(Text(std::move(title)), std::move(action));
}

Node Toggle(Node label, bool isOn, std::function<void(bool)> onChange) {
    auto d = std::make_shared<NodeData>();
    d->kind = Kind::toggle;
    d->payload = ToggleProps{isOn};
    if (!label.isEmpty()) d->children.push_back(std::move(label));
    d->on.toggle = std::move(onChange);
    return Node(std::move(d));
}

Node HostedTextField(std::shared_ptr<platform::TextField> field, std::string placeholder, std::string text) {
    return make(Kind::textField, TextFieldProps{std::move(field), std::move(placeholder), std::move(text)});
}

Node ProgressView() {
    return make(Kind::progress, ProgressProps{});
}
Node ProgressView(double fraction) {
    return make(Kind::progress, ProgressProps{.value = fraction});
}

Node Spacer(std::optional<double> minLength) {
    return make(Kind::spacer, SpacerProps{minLength});
}
Node Divider() {
    return make(Kind::divider);
}

Node Rectangle() {
    return shape(ShapeKind::rectangle);
}
Node RoundedRectangle(double cornerRadius, CornerStyle style) {
    return shape(ShapeKind::roundedRectangle, cornerRadius, style);
}
Node Circle() {
    return shape(ShapeKind::circle);
}
Node Capsule() {
    return shape(ShapeKind::capsule);
}
Node Ellipse() {
    return shape(ShapeKind::ellipse);
}

Node PathShape(std::string typeName, PathFunction path) {
    Node node = make(Kind::shape, ShapeProps{.shape = ShapeKind::path,
                                             .path = std::make_shared<const PathFunction>(std::move(path))});
    return node.viewType(std::move(typeName));
}

Node ColorView(Paint paint) {
    return Rectangle().fill(std::move(paint));
}

}  // namespace platform::view
