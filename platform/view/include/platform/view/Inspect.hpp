#pragma once
// Inspection of view trees, for tests: find nodes, read their modifiers, fire their events.
//
//     auto screen = inspect(errorView.body());
//     EXPECT_EQ(screen.find("Please try again.").font(), fonts.title.medium);
//     screen.find(by::type("ToviButton")).tap();
//
// Searches run depth first over what a node shows (see `forEachShownChild`), the node itself
// first. Events behave as a finger or the platform would: a tap goes to the nearest node on the
// way up that handles taps, and does nothing when that node or one above it is disabled, or the
// tapped node lies in a part that ignores hit testing.
//
// `find` throws InspectError when nothing matches, with the query and an outline of the tree,
// so that a test fails with a useful message at the line that searched; this type serves tests
// and tools only, and product code never calls it. A ViewRef keeps its tree alive.

#include <cstddef>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/view/NodeData.hpp"

namespace platform::view {

struct Query {
    std::string description;
    std::function<bool(const Node&)> matches;

    Query(std::string description, std::function<bool(const Node&)> matches)
        : description(std::move(description)), matches(std::move(matches)) {}
    // A bare string finds a text node whose whole text is exactly that string.
    Query(const char* text);         // NOLINT(google-explicit-constructor): terse on purpose
    Query(const std::string& text);  // NOLINT(google-explicit-constructor)
};

namespace by {
[[nodiscard]] Query text(std::string text);
[[nodiscard]] Query textContaining(std::string part);
[[nodiscard]] Query id(std::string accessibilityId);
[[nodiscard]] Query label(std::string accessibilityLabel);
[[nodiscard]] Query kind(Kind kind);
[[nodiscard]] Query type(std::string viewType);
}  // namespace by

class InspectError : public std::logic_error {
public:
    using std::logic_error::logic_error;
};

class ViewRef {
public:
    explicit ViewRef(Node root) : path_{std::move(root)} {}

    [[nodiscard]] const Node& node() const { return path_.back(); }
    const NodeData* operator->() const { return &node().data(); }

    // ---- Searching
    [[nodiscard]] ViewRef find(const Query& query) const;
    [[nodiscard]] std::optional<ViewRef> tryFind(const Query& query) const;
    [[nodiscard]] std::vector<ViewRef> findAll(const Query& query) const;
    [[nodiscard]] std::size_t count(const Query& query) const;
    [[nodiscard]] bool has(const Query& query) const { return count(query) > 0; }
    [[nodiscard]] std::optional<ViewRef> parent() const;
    // The shown, non-empty children in drawing order (see `forEachShownChild`).
    [[nodiscard]] std::vector<ViewRef> children() const;
    // Where this node lies below the root the search started at: the indices of shown,
    // non-empty children, "" for the root itself, "0/2/1" below. `at` is the inverse.
    [[nodiscard]] std::string path() const;
    [[nodiscard]] std::optional<ViewRef> at(std::string_view path) const;
    // The nearest node above this one that matches.
    [[nodiscard]] ViewRef ancestor(const Query& query) const;

    // ---- Reading
    [[nodiscard]] Kind kind() const { return node().kind(); }
    // A text node's text; for other nodes every text they show, joined by single spaces.
    [[nodiscard]] std::string text() const;
    [[nodiscard]] std::vector<std::string> texts() const;
    // Padding of all layers of this node, summed per edge.
    [[nodiscard]] EdgeInsets padding() const;
    // The innermost frame of this node.
    [[nodiscard]] std::optional<Frame> frame() const;
    // Effective environment: this node's, else the nearest one above.
    [[nodiscard]] std::optional<Font> font() const;
    [[nodiscard]] std::optional<Color> foreground() const;
    [[nodiscard]] std::optional<Color> tintColor() const;
    [[nodiscard]] bool isDisabled() const;
    // Opacity of this node's own layers, multiplied.
    [[nodiscard]] double opacity() const;
    // The kind-specific properties; throws InspectError for another kind.
    template <class T>
    [[nodiscard]] const T& props() const {
        if (const T* p = node()->template as<T>()) return *p;
        throw InspectError(std::string("props() asked of a ") + kindName(kind()) + " node");
    }

    // ---- Acting. Each answers whether a handler ran.
    bool tap() const;
    // Flips a toggle: its handler gets the opposite of the shown state.
    bool toggle() const;
    bool typeText(const std::string& text) const;
    bool refresh(std::function<void()> done = {}) const;
    // Runs the appear handlers of this node and of everything it shows, as a first display does.
    void appear() const;
    // Dismisses the first presented sheet or destination that this node presents.
    bool dismiss() const;

private:
    void walk(const Query& query, const std::function<bool(const ViewRef&)>& onMatch) const;
    std::vector<Node> path_;            // root first
    std::vector<std::size_t> indices_;  // of each node after the root among its parent's children
};

[[nodiscard]] inline ViewRef inspect(Node root) {
    return ViewRef(std::move(root));
}

// A readable outline of a tree, one node a line: kind, [view type], "text", #id, flags.
[[nodiscard]] std::string describe(const Node& root);

}  // namespace platform::view
