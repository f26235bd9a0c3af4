#include <gtest/gtest.h>

#include "platform/view/HtmlRenderer.hpp"
#include "platform/view/View.hpp"

namespace platform::view {
namespace {

// The markup between the root element and the end of the page.
std::string bodyOf(const std::string& html) {
    const std::string open = "<div class=\"root\">\n";
    auto start = html.find(open);
    auto end = html.rfind("\n</div></body>");
    if (start == std::string::npos || end == std::string::npos) return {};
    return html.substr(start + open.size(), end - start - open.size());
}

bool has(const std::string& html, const std::string& part) {
    return html.find(part) != std::string::npos;
}

TEST(HtmlRenderer, SmallTreeGivesExactlyThisMarkup) {
    Node tree = VStack({Text("Hello <you> & \"me\"").font(Font::system(16, FontWeight::bold)), Spacer(),
                        RoundedRectangle(12).fill(Color::hex("#346ECE")).frame(40, 20)},
                       Alignment::leading, 4)
                    .padding(Edge::horizontal, 16)
                    .accessibilityIdentifier("root");
    // The stack fills only through its spacer, so it keeps at least its content's size; the
    // spacer and the shape have no size of their own and may shrink to nothing.
    const std::string expected =
        "<div class=\"l\" style=\"flex:1 1 0;padding:0px 16px 0px 16px;\" data-id=\"root\">"
        "<div class=\"v\" style=\"flex:1 1 0;align-items:flex-start;gap:4px;\">"
        "<span class=\"t\" style=\"font:700 16px/1.25 system-ui,-apple-system,&quot;Liberation Sans&quot;,"
        "&quot;DejaVu Sans&quot;,sans-serif;\">Hello &lt;you&gt; &amp; &quot;me&quot;</span>"
        "<div style=\"flex:1 1 0;min-height:0;\"></div>"
        "<div class=\"l\" style=\"width:40px;height:20px;justify-content:center;align-items:center;\">"
        "<div style=\"align-self:stretch;flex:1 1 0;min-height:0;border-radius:12px;background:#346ece;\">"
        "</div></div></div></div>";
    const std::string html = renderHtml(tree);
    EXPECT_EQ(bodyOf(html), expected);
    EXPECT_EQ(renderHtml(tree), html) << "rendering is deterministic";
}

TEST(HtmlRenderer, StylesFollowTheModifiers) {
    Node tree = HStack({Text("a").foregroundColor(Color::black().opacity(0.5)), Circle().stroke(Color::white(), 2),
                        Text("b").blur(3).opacity(0.25).clipShape(Capsule())},
                       Alignment::top, 0)
                    .background(ColorView(LinearGradient{
                        {Color::white(), Color::black()}, UnitPoint::topLeading(), UnitPoint::bottomTrailing()}));
    const std::string html = renderHtml(tree);
    EXPECT_TRUE(has(html, "align-items:flex-start;gap:0px;\"><span class=\"t\"")) << html;
    EXPECT_TRUE(has(html, "color:rgba(0,0,0,0.5)")) << html;
    EXPECT_TRUE(has(html, "box-shadow:0 0 0 1px #ffffff,inset 0 0 0 1px #ffffff")) << html;
    EXPECT_TRUE(has(html, "border-radius:50%")) << html;
    EXPECT_TRUE(
        has(html, "overflow:hidden;border-radius:9999px;\"><div class=\"l\" style=\"opacity:0.25;filter:blur(3px);\""))
        << html;
    EXPECT_TRUE(has(html, "background:linear-gradient(to bottom right,#ffffff,#000000)")) << html;
    EXPECT_TRUE(has(html, "z-index:-1")) << html;
}

TEST(HtmlRenderer, CustomPathsAreInlineSvgAtTheFramedSize) {
    Node shape =
        PathShape("Triangle",
                  [](Rect r) {
                      return Path().move({0, r.height}).line({r.width / 2, 0}).line({r.width, r.height}).close();
                  })
            .fill(Color::white())
            .stroke(Color::black(), 1, 10)
            .frame(100, 50);
    const std::string html = renderHtml(shape);
    EXPECT_TRUE(has(html, "viewBox=\"0 0 100 50\"")) << html;
    EXPECT_TRUE(has(html, "<path d=\"M0 50 L50 0 L100 50 Z\"")) << html;
    EXPECT_TRUE(has(html, "stroke-miterlimit:10")) << html;
    EXPECT_TRUE(has(html, "data-view=\"Triangle\"")) << html;
}

TEST(HtmlRenderer, AssetsComeFromTheResolverAndTemplatesBecomeMasks) {
    HtmlOptions options;
    options.assets = [](const ImageSource& s) -> std::optional<std::string> {
        if (s.name == "dot") return std::string("<svg viewBox=\"0 0 8 8\"><circle cx=\"4\" cy=\"4\" r=\"4\"/></svg>");
        return std::nullopt;
    };
    const std::string original = renderHtml(AssetImage("dot", "B"), options);
    EXPECT_TRUE(has(original, "width:8px;height:8px;"));
    EXPECT_TRUE(has(original, "<svg width=\"100%\" height=\"100%\" preserveAspectRatio=\"xMidYMid meet\" viewBox"));
    const std::string templated = renderHtml(AssetImage("dot").renderingMode(RenderingMode::templated), options);
    EXPECT_TRUE(has(templated, "mask:url(&#39;data:image/svg+xml;base64,")) << templated;
    EXPECT_TRUE(has(templated, "background-color:currentColor")) << templated;
    const std::string missing = renderHtml(AssetImage("nope"), options);
    EXPECT_TRUE(has(missing, "border:1px dashed currentColor"));
}

TEST(HtmlRenderer, ButtonsCarryTheirPressedStyleAndDisabledState) {
    ButtonStyle style = [](const Node& label, bool pressed) {
        Node body = label;
        return body.opacity(pressed ? 0.5 : 1);
    };
    const std::string html = renderHtml(Button("Go", [] {}).buttonStyle(style).disabled());
    EXPECT_TRUE(has(html, "<button class=\"b\" style=\"pointer-events:none;\" type=\"button\" disabled>")) << html;
    EXPECT_TRUE(has(html, "<span class=\"p\"><div class=\"l\" style=\"opacity:0.5;\">")) << html;
}

TEST(HtmlRenderer, NavigationShowsTheTopDestinationAndSheetsTheirDetent) {
    Node root = VStack({Text("root page")})
                    .navigationTitle("Wallet")
                    .navigationDestination(true, Text("detail page").navigationTitle("Detail"));
    Node tree = NavigationStack(root).sheet(true, Text("in sheet"),
                                            SheetOptions{{Detent::fraction(0.7), Detent::large()}, true});
    const std::string html = renderHtml(tree);
    EXPECT_FALSE(has(html, "root page"));
    EXPECT_TRUE(has(html, "<span class=\"nt\">Detail</span>")) << html;
    EXPECT_TRUE(has(html, "data-back")) << html;
    EXPECT_TRUE(has(html, "height:590.8px;")) << html;
    EXPECT_TRUE(has(html, "<div class=\"grab\"></div>")) << html;
    EXPECT_TRUE(has(html, "in sheet")) << html;
}

}  // namespace
}  // namespace platform::view
