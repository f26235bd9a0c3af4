#pragma once
// The HTML renderer's writer: one instance renders one page into a string. Its methods are
// split over HtmlRenderer.cpp (page, layers and containers) and HtmlLeaves.cpp (text, images,
// controls, shapes, navigation and sheets).

#include <string>

#include "HtmlLayout.hpp"
#include "platform/view/HtmlRenderer.hpp"

namespace platform::view::internal {

class Renderer {
public:
    // Appends the page to `out`.
    Renderer(const HtmlOptions& options, std::string& out) : opt_(options), out_(out) {}

    void page(const Node& root);
    // The root element alone.
    void root(const Node& root);

private:
    void openTag(const char* tag, const char* cls, const std::string& style, const std::string& attrs = {});
    static void attr(std::string& out, const char* name, const std::string& value);
    std::string identity(const NodeData& d) const;
    static std::string environment(const NodeData& d);
    static std::string layerStyle(const Layer& layer, Ctx& ctx);
    void decoration(const Decoration& deco, bool behind, const Ctx& ctx);
    void node(const Node& n, Flow flow, Kind parentKind, Ctx ctx);
    void children(const NodeData& d, Flow flow, const Ctx& ctx);
    void content(const Node& n, std::string style, const std::string& attrs, const Ctx& ctx);

    void text(const TextProps& t, std::string style, const std::string& attrs);
    void image(const ImageProps& img, std::string style, const std::string& attrs);
    void button(const NodeData& d, std::string style, std::string attrs, const Ctx& ctx);
    void progress(const ProgressProps& p, std::string style, const std::string& attrs, const Ctx& ctx);
    void shape(const ShapeProps& s, std::string style, const std::string& attrs, const Ctx& ctx);
    // The first presented push under `n`, not looking into sheets or nested stacks.
    static const Presentation* presentedPush(const Node& n);
    static const NavigationItem* navigationItem(const Node& n);
    void navigation(const NodeData& d, const std::string& style, const std::string& attrs, const Ctx& ctx);
    void sheet(const Presentation& p);

    const HtmlOptions& opt_;
    std::string& out_;
    int sheetDepth_ = 0;
};

}  // namespace platform::view::internal
