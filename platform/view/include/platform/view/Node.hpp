#pragma once
// Node: one element of a screen told as data.
//
// A screen is a tree of nodes built by the functions of Builders.hpp and refined by the
// modifier methods below, so that C++ reads close to the declarative source:
//
//     VStack({Text("Balance").font(fonts.title.large), Button("Add Funds", onAdd)})
//         .spacing(8)
//         .padding(Edge::horizontal, 16);
//
// Nodes are values. A Node is a handle to immutable shared data with copy-on-write, so copying
// one (into a child list, a sheet, an overlay) costs a reference count, while changing one that
// is shared first clones its top level. Children are nodes in a vector, in order.
//
// Modifiers that lay out or decorate (padding, frame, background and overlay, clip, opacity and
// blur) are kept in order, the way the phone applies them: each node has a list of layers from
// the inside out, and a modifier that comes after one of a later stage opens a new layer. So
// `.padding(8).background(c)` paints behind the padding, while `.background(c).padding(8)`
// leaves the padding clear. Environment modifiers (font, foreground colour, tint, colour scheme,
// disabled) reach the whole subtree; on one node the first one set (the one nearest the content)
// wins, as on the phone. Event handlers (tap, toggle, text change, refresh, appear) live on the
// nodes; see Inspect.hpp for how tests fire them.
//
// A modifier that belongs to another kind (`spacing` on a text, `fill` on a stack) is a
// programming fault and aborts with a message naming the modifier.
//
// Thread safety: build and read trees on one thread (the main queue); a finished tree may be
// read from several threads at once as long as nobody modifies it.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/view/Color.hpp"
#include "platform/view/Font.hpp"
#include "platform/view/Geometry.hpp"
#include "platform/view/Paint.hpp"

namespace platform::view {

struct NodeData;
struct Frame;
struct Animation;
struct TransitionTag;
struct SheetOptions;
enum class Kind : std::uint8_t;
enum class ColorScheme : std::uint8_t;
enum class RenderingMode : std::uint8_t;
enum class ContentMode : std::uint8_t;
enum class ControlSize : std::uint8_t;
enum class TitleDisplayMode : std::uint8_t;
enum class LoadPhase : std::uint8_t;

class Node;
// A button style draws a button's label in the pressed or the normal state.
using ButtonStyle = std::function<Node(const Node& label, bool isPressed)>;
// A refresh action calls `done` when the refresh has ended (the indicator stays until then).
using RefreshAction = std::function<void(std::function<void()> done)>;

class Node {
public:
    // An empty node: draws nothing, takes no space, and is skipped by stacks.
    Node() = default;
    explicit Node(std::shared_ptr<NodeData> data) : d_(std::move(data)) {}

    [[nodiscard]] const NodeData& data() const;
    const NodeData* operator->() const { return &data(); }
    [[nodiscard]] Kind kind() const;
    [[nodiscard]] bool isEmpty() const;
    [[nodiscard]] const std::vector<Node>& children() const;

    // ---- Layout and decoration (ordered, see above)
    Node& padding(double length = 16) { return padding(Edge::all, length); }
    Node& padding(Edge edges, double length);
    Node& padding(EdgeInsets insets);
    Node& frame(const Frame& frame);
    Node& frame(double width, double height);
    // A frame of infinite maximum width (height), aligning the content by `alignment`.
    Node& fillWidth(Alignment alignment = Alignment::center);
    Node& fillHeight(Alignment alignment = Alignment::center);
    Node& background(Node content, Alignment alignment = Alignment::center);
    Node& background(Paint paint);
    Node& overlay(Node content, Alignment alignment = Alignment::center);
    // Clips to `shape` (a shape node such as RoundedRectangle(24, CornerStyle::continuous)).
    Node& clipShape(Node shape);
    Node& opacity(double value);
    Node& blur(double radius);

    // ---- Environment (applies to the subtree)
    Node& font(Font font);
    Node& foregroundColor(Color color);
    Node& tint(Color color);
    Node& colorScheme(ColorScheme scheme);
    // Disabled nodes and everything in them ignore taps, toggles and typing.
    Node& disabled(bool disabled = true);

    // ---- Kind-specific
    Node& spacing(double spacing);                                            // stacks
    Node& alignment(Alignment alignment);                                     // stacks
    Node& lineLimit(int lines);                                               // text
    Node& multilineTextAlignment(HorizontalPart alignment);                   // text
    Node& resizable();                                                        // images
    Node& renderingMode(RenderingMode mode);                                  // images
    Node& aspectRatio(ContentMode mode);                                      // images
    Node& fill(Paint paint);                                                  // shapes
    Node& stroke(Paint paint, double lineWidth = 1, double miterLimit = 10);  // shapes
    Node& showsIndicators(bool shows);                                        // scroll views
    Node& refreshable(RefreshAction action);                                  // scroll views
    Node& buttonStyle(ButtonStyle style);                                     // buttons
    // The pressed state that the platform gives a button style; for previews and tests.
    Node& pressed(bool pressed = true);   // buttons
    Node& controlSize(ControlSize size);  // progress indicators
    Node& phase(LoadPhase phase);         // asynchronous images

    // ---- Events
    Node& onTapGesture(std::function<void()> action);
    Node& onAppear(std::function<void()> action);
    Node& onDisappear(std::function<void()> action);
    Node& onTextChange(std::function<void(const std::string&)> action);
    // Makes the whole rectangle of the node tappable, not only its drawn parts.
    Node& contentShapeRectangle();
    Node& allowsHitTesting(bool allows);

    // ---- Animation, transition and identity
    // Animates changes of the state named `value` with `animation`.
    Node& animation(const Animation& animation, std::string value);
    Node& transition(const TransitionTag& tag);
    Node& accessibilityIdentifier(std::string id);
    // The node's identity among its siblings for a screen host (rows of a list keyed by their
    // record's id), instead of its position.
    Node& id(std::string identity);
    Node& accessibilityLabel(std::string label);
    // The component that produced this node ("ToviButton"), for inspection by type.
    Node& viewType(std::string name);

    // ---- Navigation and presentation
    Node& navigationTitle(std::string title);
    Node& navigationBarTitleDisplayMode(TitleDisplayMode mode);
    Node& toolbar(std::optional<Node> leading, std::optional<Node> trailing);
    // Pushes `destination` on the enclosing navigation stack while `isPresented`.
    Node& navigationDestination(bool isPresented, Node destination, std::function<void()> onDismiss = {});
    // Presents `content` as a sheet over the screen while `isPresented`.
    Node& sheet(bool isPresented, Node content, const SheetOptions& options, std::function<void()> onDismiss = {});

    // Same data (not only equal): for tests of sharing.
    [[nodiscard]] bool sharesDataWith(const Node& other) const { return d_ == other.d_; }

private:
    NodeData& mut();
    NodeData& mutKind(const char* modifier, std::initializer_list<Kind> kinds);
    std::shared_ptr<NodeData> d_;
};

}  // namespace platform::view
