#pragma once
// HtmlRenderer: a view tree as one self-contained HTML page, for previews in a browser.
//
// The page needs nothing from outside: stacks are flexbox, fonts, colours, paddings, corners,
// strokes and blur are CSS, custom paths are inline SVG, and assets are inline SVG (or a CSS
// mask of it for template images, so they take the foreground colour). The output depends only
// on the tree and the options: rendering the same tree twice gives the same bytes.
//
// The browser lays the page out, so sizes follow the tree's frames and paddings; custom paths
// are drawn for the size the renderer estimates from frames and paddings and then stretched to
// the box they get. Continuous corners are drawn as circular ones. Buttons show their pressed
// style while the mouse is down. Presented sheets are drawn over the page at their smallest
// detent; a navigation stack shows its top-most pushed destination with a bar holding the
// title and toolbar items.
//
// Thread safety: a pure function of its arguments, callable from any thread. Each thread that
// renders keeps one buffer as large as the largest page it rendered, reused by the next page.

#include <functional>
#include <optional>
#include <string>

#include "platform/view/Color.hpp"
#include "platform/view/Kinds.hpp"
#include "platform/view/Node.hpp"
#include "platform/view/NodeData.hpp"

namespace platform::view {

struct HtmlOptions {
    std::string title = "Preview";
    // The screen the root is laid out in, in points (CSS pixels).
    double width = 390;
    double height = 844;
    Color pageBackground = Color::white();
    // SVG text of an asset image (with a viewBox and without width and height attributes), or
    // absent when no bundle has it; absent assets are drawn as a dashed box.
    std::function<std::optional<std::string>(const ImageSource&)> assets;

    // For pages that send events back: a name for a node, written as its `data-node`
    // attribute when not empty (a host's node path, say).
    std::function<std::string(const NodeData&)> nodeName;
    // Trusted markup added to the page's head, and before and after the root in its body.
    std::string head;
    std::string bodyStart;
    std::string bodyEnd;
};

[[nodiscard]] std::string renderHtml(const Node& root, const HtmlOptions& options = {});

// Only the root element of the page `renderHtml` makes (without the document around it), for a
// page that swaps its screen in place.
[[nodiscard]] std::string renderHtmlRoot(const Node& root, const HtmlOptions& options = {});

}  // namespace platform::view
