#include "platform/view/Node.hpp"

#include <string>

#include "platform/Fatal.hpp"
#include "platform/view/Builders.hpp"
#include "platform/view/NodeData.hpp"

namespace platform::view {

namespace {

// Stages of the ordered modifiers, from the inside out.
enum Stage : std::uint8_t { paddingStage = 1, frameStage = 2, decorationStage = 3, clipStage = 4, effectStage = 5 };

const NodeData& emptyData() {
    static const NodeData empty;
    return empty;
}

// The layer a modifier of `stage` goes into: the outermost one, unless that one already holds
// something applied later (or a single-valued slot of this stage), in which case a new layer
// wraps everything so far.
Layer& layerFor(NodeData& d, std::uint8_t stage, bool slotTaken) {
    if (d.layers.empty() || d.layers.back().stage > stage || slotTaken) d.layers.emplace_back();
    Layer& layer = d.layers.back();
    if (layer.stage < stage) layer.stage = stage;
    return layer;
}

bool topHas(const NodeData& d, auto member) {
    return !d.layers.empty() && static_cast<bool>(d.layers.back().*member);
}

void restyle(NodeData& d) {
    auto& button = std::get<ButtonProps>(d.payload);
    Node body = button.style ? (*button.style)(button.label, button.pressed) : button.label;
    d.children.assign(1, std::move(body));
}

}  // namespace

const NodeData& Node::data() const {
    return d_ ? *d_ : emptyData();
}
Kind Node::kind() const {
    return data().kind;
}
bool Node::isEmpty() const {
    return data().kind == Kind::empty;
}
const std::vector<Node>& Node::children() const {
    return data().children;
}

NodeData& Node::mut() {
    if (!d_) {
        d_ = std::make_shared<NodeData>();
    } else if (d_.use_count() > 1) {
        d_ = std::make_shared<NodeData>(*d_);
    }
    return *d_;
}

NodeData& Node::mutKind(const char* modifier, std::initializer_list<Kind> kinds) {
    for (Kind k : kinds) {
        if (kind() == k) return mut();
    }
    platform::fatalStop(std::string("platform::view: ") + modifier + " does not apply to a " + kindName(kind()) +
                        " node");
}

Node& Node::padding(Edge edges, double length) {
    return padding(EdgeInsets::on(edges, length));
}

Node& Node::padding(EdgeInsets insets) {
    layerFor(mut(), paddingStage, false).padding += insets;
    return *this;
}

Node& Node::frame(const Frame& f) {
    NodeData& d = mut();
    layerFor(d, frameStage, topHas(d, &Layer::frame)).frame = f;
    return *this;
}

Node& Node::frame(double width, double height) {
    return frame(Frame{.width = width, .height = height});
}
Node& Node::fillWidth(Alignment a) {
    return frame(Frame{.maxWidth = infinity, .alignment = a});
}
Node& Node::fillHeight(Alignment a) {
    return frame(Frame{.maxHeight = infinity, .alignment = a});
}

Node& Node::background(Node content, Alignment a) {
    layerFor(mut(), decorationStage, false).backgrounds.push_back({std::move(content), a});
    return *this;
}

Node& Node::background(Paint paint) {
    return background(ColorView(std::move(paint)));
}

Node& Node::overlay(Node content, Alignment a) {
    layerFor(mut(), decorationStage, false).overlays.push_back({std::move(content), a});
    return *this;
}

Node& Node::clipShape(Node shape) {
    NodeData& d = mut();
    layerFor(d, clipStage, topHas(d, &Layer::clip)).clip = std::move(shape);
    return *this;
}

Node& Node::opacity(double value) {
    layerFor(mut(), effectStage, false).opacity *= value;
    return *this;
}

Node& Node::blur(double radius) {
    NodeData& d = mut();
    layerFor(d, effectStage, !d.layers.empty() && d.layers.back().blur != 0).blur = radius;
    return *this;
}

Node& Node::font(Font f) {
    auto& slot = mut().env.font;
    if (!slot) slot = std::move(f);
    return *this;
}

Node& Node::foregroundColor(Color c) {
    auto& slot = mut().env.foreground;
    if (!slot) slot = c;
    return *this;
}

Node& Node::tint(Color c) {
    auto& slot = mut().env.tint;
    if (!slot) slot = c;
    return *this;
}

Node& Node::colorScheme(ColorScheme s) {
    auto& slot = mut().env.colorScheme;
    if (!slot) slot = s;
    return *this;
}

Node& Node::disabled(bool disabled) {
    if (disabled) mut().env.disabled = true;
    return *this;
}

Node& Node::spacing(double s) {
    std::get<StackProps>(mutKind("spacing", {Kind::vstack, Kind::hstack}).payload).spacing = s;
    return *this;
}

Node& Node::alignment(Alignment a) {
    std::get<StackProps>(mutKind("alignment", {Kind::vstack, Kind::hstack, Kind::zstack}).payload).alignment = a;
    return *this;
}

Node& Node::lineLimit(int lines) {
    std::get<TextProps>(mutKind("lineLimit", {Kind::text}).payload).lineLimit = lines;
    return *this;
}

Node& Node::multilineTextAlignment(HorizontalPart a) {
    std::get<TextProps>(mutKind("multilineTextAlignment", {Kind::text}).payload).multilineAlignment = a;
    return *this;
}

Node& Node::resizable() {
    std::get<ImageProps>(mutKind("resizable", {Kind::image}).payload).resizable = true;
    return *this;
}

Node& Node::renderingMode(RenderingMode m) {
    std::get<ImageProps>(mutKind("renderingMode", {Kind::image}).payload).renderingMode = m;
    return *this;
}

Node& Node::aspectRatio(ContentMode m) {
    std::get<ImageProps>(mutKind("aspectRatio", {Kind::image}).payload).contentMode = m;
    return *this;
}

Node& Node::fill(Paint paint) {
    std::get<ShapeProps>(mutKind("fill", {Kind::shape}).payload).fill = std::move(paint);
    return *this;
}

Node& Node::stroke(Paint paint, double lineWidth, double miterLimit) {
    std::get<ShapeProps>(mutKind("stroke", {Kind::shape}).payload).stroke =
        Stroke{std::move(paint), lineWidth, miterLimit};
    return *this;
}

Node& Node::showsIndicators(bool shows) {
    std::get<ScrollProps>(mutKind("showsIndicators", {Kind::scrollView}).payload).showsIndicators = shows;
    return *this;
}

Node& Node::refreshable(RefreshAction action) {
    mutKind("refreshable", {Kind::scrollView}).on.refresh = std::move(action);
    return *this;
}

Node& Node::buttonStyle(ButtonStyle style) {
    NodeData& d = mutKind("buttonStyle", {Kind::button});
    std::get<ButtonProps>(d.payload).style = std::make_shared<const ButtonStyle>(std::move(style));
    restyle(d);
    return *this;
}

Node& Node::pressed(bool pressed) {
    NodeData& d = mutKind("pressed", {Kind::button});
    std::get<ButtonProps>(d.payload).pressed = pressed;
    restyle(d);
    return *this;
}

Node& Node::controlSize(ControlSize size) {
    std::get<ProgressProps>(mutKind("controlSize", {Kind::progress}).payload).controlSize = size;
    return *this;
}

Node& Node::phase(LoadPhase p) {
    std::get<AsyncImageProps>(mutKind("phase", {Kind::asyncImage}).payload).phase = p;
    return *this;
}

Node& Node::onTapGesture(std::function<void()> action) {
    mut().on.tap = std::move(action);
    return *this;
}

Node& Node::onAppear(std::function<void()> action) {
    mut().on.appear = std::move(action);
    return *this;
}

Node& Node::onDisappear(std::function<void()> action) {
    mut().on.disappear = std::move(action);
    return *this;
}

Node& Node::onTextChange(std::function<void(const std::string&)> action) {
    mutKind("onTextChange", {Kind::textField}).on.textChange = std::move(action);
    return *this;
}

Node& Node::contentShapeRectangle() {
    mut().contentShapeRectangle = true;
    return *this;
}

Node& Node::allowsHitTesting(bool allows) {
    mut().hitTesting = allows;
    return *this;
}

Node& Node::animation(const Animation& a, std::string value) {
    mut().animations.push_back({a, std::move(value)});
    return *this;
}

Node& Node::transition(const TransitionTag& tag) {
    mut().transition = tag;
    return *this;
}

Node& Node::accessibilityIdentifier(std::string id) {
    mut().accessibilityId = std::move(id);
    return *this;
}

Node& Node::accessibilityLabel(std::string label) {
    mut().accessibilityLabel = std::move(label);
    return *this;
}

Node& Node::id(std::string identity) {
    mut().identity = std::move(identity);
    return *this;
}

Node& Node::viewType(std::string name) {
    mut().viewType = std::move(name);
    return *this;
}

Node& Node::navigationTitle(std::string title) {
    auto& nav = mut().navigation;
    if (!nav) nav.emplace();
    nav->title = std::move(title);
    return *this;
}

Node& Node::navigationBarTitleDisplayMode(TitleDisplayMode mode) {
    auto& nav = mut().navigation;
    if (!nav) nav.emplace();
    nav->displayMode = mode;
    return *this;
}

Node& Node::toolbar(std::optional<Node> leading, std::optional<Node> trailing) {
    auto& nav = mut().navigation;
    if (!nav) nav.emplace();
    nav->leading = std::move(leading);
    nav->trailing = std::move(trailing);
    return *this;
}

Node& Node::navigationDestination(bool isPresented, Node destination, std::function<void()> onDismiss) {
    mut().presentations.push_back(
        {Presentation::Type::push, isPresented, std::move(destination), {}, std::move(onDismiss)});
    return *this;
}

Node& Node::sheet(bool isPresented, Node content, const SheetOptions& options, std::function<void()> onDismiss) {
    mut().presentations.push_back(
        {Presentation::Type::sheet, isPresented, std::move(content), options, std::move(onDismiss)});
    return *this;
}

void forEachShownChild(const Node& node, const std::function<void(const Node&)>& visit) {
    const NodeData& d = node.data();
    for (auto layer = d.layers.rbegin(); layer != d.layers.rend(); ++layer) {
        for (auto bg = layer->backgrounds.rbegin(); bg != layer->backgrounds.rend(); ++bg) visit(bg->content);
    }
    if (const auto* image = d.as<AsyncImageProps>()) {
        visit(image->phase == LoadPhase::loaded ? image->content : image->placeholder);
    }
    for (const Node& child : d.children) visit(child);
    for (const Layer& layer : d.layers) {
        for (const Decoration& overlay : layer.overlays) visit(overlay.content);
    }
    if (d.navigation) {
        if (d.navigation->leading) visit(*d.navigation->leading);
        if (d.navigation->trailing) visit(*d.navigation->trailing);
    }
    for (const Presentation& p : d.presentations) {
        if (p.isPresented) visit(p.content);
    }
}

}  // namespace platform::view
