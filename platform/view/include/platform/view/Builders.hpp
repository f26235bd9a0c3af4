#pragma once
// Builders: one function per kind of node, named as in declarative screen code so that a
// screen in C++ reads like its description. Children that are empty nodes (`Node{}`) are
// skipped, which is how a branch that shows nothing is written: `cond ? Text("x") : Node{}`.

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/view/Kinds.hpp"
#include "platform/view/Modifiers.hpp"
#include "platform/view/Node.hpp"
#include "platform/view/NodeData.hpp"

namespace platform::view {

// ---- Containers
[[nodiscard]] Node VStack(std::vector<Node> children, Alignment alignment = Alignment::center,
                          std::optional<double> spacing = std::nullopt);
[[nodiscard]] Node HStack(std::vector<Node> children, Alignment alignment = Alignment::center,
                          std::optional<double> spacing = std::nullopt);
[[nodiscard]] Node ZStack(std::vector<Node> children, Alignment alignment = Alignment::center);
[[nodiscard]] Node Group(std::vector<Node> children);
[[nodiscard]] Node ScrollView(Node content, Axis axes = Axis::vertical, bool showsIndicators = true);
[[nodiscard]] Node NavigationStack(Node root);

// One node per element of `items`, for stacks: `VStack(ForEach(rows, rowView))`.
template <class Range, class Fn>
[[nodiscard]] std::vector<Node> ForEach(const Range& items, Fn&& makeNode) {
    std::vector<Node> nodes;
    for (const auto& item : items) nodes.push_back(makeNode(item));
    return nodes;
}

// ---- Text
[[nodiscard]] Node Text(std::string text);
// Attributed text: runs that may each carry a colour and font of their own.
[[nodiscard]] Node Text(std::vector<TextRun> runs);

// ---- Images
// An image asset of `bundle` (the module that ships it).
[[nodiscard]] Node AssetImage(std::string name, std::string bundle = {});
// A system symbol ("plus", "chevron.right"); sized by the font like text.
[[nodiscard]] Node SystemImage(std::string name);
// An image loaded from `url`, as the content of an asynchronous image.
[[nodiscard]] Node UrlImage(std::string url);
[[nodiscard]] Node AsyncImage(std::string url, Node content, Node placeholder, double scale = 1);

// ---- Controls
[[nodiscard]] Node Button(Node label, std::function<void()> action);
[[nodiscard]] Node Button(std::string title, std::function<void()> action);
[[nodiscard]] Node Toggle(Node label, bool isOn, std::function<void(bool)> onChange);
[[nodiscard]] Node HostedTextField(std::shared_ptr<platform::TextField> field, std::string placeholder = {},
                                   std::string text = {});
[[nodiscard]] Node ProgressView();
[[nodiscard]] Node ProgressView(double fraction);

// ---- Layout helpers
[[nodiscard]] Node Spacer(std::optional<double> minLength = std::nullopt);
[[nodiscard]] Node Divider();
[[nodiscard]] inline Node EmptyView() {
    return Node{};
}

// ---- Shapes (they fill what they are offered)
[[nodiscard]] Node Rectangle();
[[nodiscard]] Node RoundedRectangle(double cornerRadius, CornerStyle style = CornerStyle::circular);
[[nodiscard]] Node Circle();
[[nodiscard]] Node Capsule();
[[nodiscard]] Node Ellipse();
// A custom shape whose outline `path` draws in the rectangle it is given. `typeName` names the
// shape for inspection by type.
[[nodiscard]] Node PathShape(std::string typeName, PathFunction path);
// A colour or gradient used as a view: a rectangle filled with it.
[[nodiscard]] Node ColorView(Paint paint);

}  // namespace platform::view
