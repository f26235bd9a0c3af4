#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/view/HtmlRenderer.hpp"
#include "platform/view/Inspect.hpp"
#include "platform/view/View.hpp"

namespace platform::view {
namespace {

bool has(const std::string& html, const std::string& part) {
    return html.find(part) != std::string::npos;
}

// Each kind and modifier leaves its own mark on the page; a row names what a browser would get
// wrong without it.
TEST(HtmlMarkup, EveryKindAndModifierShows) {
    struct Case {
        const char* why;
        Node tree;
        std::vector<std::string> parts;
    };
    const Color red = Color::rgb(1, 0, 0);
    const Case cases[] = {
        {"attributed runs keep their own colour and font",
         Text({TextRun{"$5"}, TextRun{" bonus", red, Font::system(12, FontWeight::bold)}}),
         {"$5<span style=\"font:700 12px/1.25", "color:#ff0000;\"> bonus</span>"}},
        {"line limit and centred lines",
         Text("t").lineLimit(2).multilineTextAlignment(HorizontalPart::center),
         {"text-align:center;", "-webkit-line-clamp:2;"}},
        {"toggle shows its state in the tint",
         Toggle(Text("Auto"), true, [](bool) {}).tint(red),
         {"class=\"sw on\" style=\"background:#ff0000\""}},
        {"toggle off", Toggle(Text("Auto"), false, [](bool) {}), {"class=\"sw\""}},
        {"text field shows placeholder and value, escaped",
         HostedTextField(nullptr, "Amount <$>", "1\"2"),
         {"type=\"text\" placeholder=\"Amount &lt;$&gt;\" value=\"1&quot;2\""}},
        {"determinate progress is a bar", ProgressView(0.25).tint(red), {"width:25%;background:#ff0000"}},
        {"spinner sizes follow the control size",
         ProgressView().controlSize(ControlSize::large),
         {"width:37px;height:37px;", "role=\"progressbar\""}},
        {"scroll view without indicators, refreshable",
         ScrollView(Text("x"), Axis::horizontal, false).refreshable([](std::function<void()> done) { done(); }),
         {"class=\"sv ni\"", "flex-direction:row;", "data-refreshable"}},
        {"min and max frames with alignment",
         Text("x").frame(
             Frame{.minWidth = 10, .maxWidth = 200, .minHeight = 5, .alignment = Alignment::bottomTrailing}),
         {"min-width:10px;max-width:200px;min-height:5px;justify-content:flex-end;align-items:flex-end;"}},
        {"full width stretches in a column", VStack({Text("x").fillWidth()}), {"align-self:stretch;"}},
        {"url image",
         UrlImage("https://example.com/a.png").resizable().aspectRatio(ContentMode::fit),
         {"src=\"https://example.com/a.png\"", "object-fit:contain;"}},
        {"async image shows its placeholder until loaded",
         AsyncImage("https://example.com/b.png", UrlImage("https://example.com/b.png"), Text("wait")),
         {"data-url=\"https://example.com/b.png\"", ">wait</span>"}},
        {"system symbols are inline drawings sized like text",
         SystemImage("chevron.right"),
         {"width:1em;height:1em;", "<svg"}},
        {"accessibility identifier and label",
         Text("x").accessibilityIdentifier("amount").accessibilityLabel("Amount, dollars"),
         {"data-id=\"amount\" aria-label=\"Amount, dollars\""}},
        {"colour scheme and disabled reach the page",
         VStack({Text("x")}).colorScheme(ColorScheme::light).disabled(),
         {"color-scheme:light;pointer-events:none;"}},
        {"continuous corners are drawn as circular ones",
         RoundedRectangle(24, CornerStyle::continuous),
         {"border-radius:24px;"}},
        {"divider", VStack({Divider()}), {"class=\"dv\""}},
        {"overlay on top, aligned",
         Text("x").overlay(Text("badge"), Alignment::topTrailing),
         {"<div class=\"d\" style=\"justify-content:flex-start;align-items:flex-end\"><span class=\"t\">badge"}},
        {"a font family cannot leave its CSS string",
         Text("x").font(Font::custom("Evil\";color:red;\"\n", 12)),
         {"&quot;Evil\\&quot;;color:red;\\&quot;&quot;,system-ui"}},
        {"transition tag for hosts",
         Group({Text("x")}).transition(TransitionTag{"flip", 0.5, 1, 7}),
         {"data-transition=\"flip\""}},
    };
    for (const Case& c : cases) {
        const std::string html = renderHtml(c.tree);
        for (const std::string& part : c.parts)
            EXPECT_TRUE(has(html, part)) << c.why << "\nmissing: " << part << "\n" << html;
    }
}

TEST(HtmlMarkup, ClosedPresentationsAndHiddenBranchesLeaveNoTrace) {
    Node tree = VStack({Text("shown"), Node{}})
                    .sheet(false, Text("closed sheet"), SheetOptions{})
                    .navigationDestination(false, Text("not pushed"));
    const std::string html = renderHtml(NavigationStack(tree));
    EXPECT_TRUE(has(html, "shown"));
    EXPECT_FALSE(has(html, "closed sheet"));
    EXPECT_FALSE(has(html, "not pushed"));
    EXPECT_FALSE(has(html, "data-back")) << "nothing pushed: no back button";
}

TEST(HtmlMarkup, PageIsWholeAndSizedByTheOptions) {
    HtmlOptions options;
    options.title = "A & B";
    options.width = 320;
    options.height = 568;
    options.pageBackground = Color::rgb(0, 0, 0, 0.5);
    const std::string html = renderHtml(Text("x"), options);
    EXPECT_TRUE(html.starts_with("<!DOCTYPE html>\n"));
    EXPECT_TRUE(html.ends_with("</html>\n"));
    EXPECT_TRUE(has(html, "<title>A &amp; B</title>"));
    EXPECT_TRUE(has(html, ".root{width:320px;min-height:568px}"));
    EXPECT_TRUE(has(html, "body{background:rgba(0,0,0,0.5)}"));
    EXPECT_FALSE(has(html, "<script")) << "the page is inert";
    EXPECT_FALSE(has(html, "http")) << "nothing is fetched from outside";
}

TEST(HtmlMarkup, ResolverThatRendersDoesNotDisturbThePage) {
    HtmlOptions options;
    options.assets = [](const ImageSource&) -> std::optional<std::string> {
        const std::string inner = renderHtml(Text("inner page"));
        if (!has(inner, "inner page")) return std::nullopt;
        return std::string("<svg viewBox=\"0 0 2 2\"><rect width=\"2\" height=\"2\"/></svg>");
    };
    Node tree = VStack({Text("before"), AssetImage("dot"), Text("after")});
    const std::string html = renderHtml(tree, options);
    const auto before = html.find(">before<");
    const auto image = html.find("<rect width=\"2\"");
    const auto after = html.find(">after<");
    ASSERT_NE(image, std::string::npos) << html;
    EXPECT_LT(before, image);
    EXPECT_LT(image, after);
    EXPECT_NE(after, std::string::npos);
    EXPECT_FALSE(has(html, "inner page"));
    EXPECT_EQ(renderHtml(tree, options), html);
}

TEST(InspectReading, OutlineLabelsAndWrongKindProps) {
    Node tree = VStack({Button(Text("Pay").accessibilityLabel("Pay now"), [] {}).disabled()}).viewType("Sheet");
    auto screen = inspect(tree);
    EXPECT_EQ(screen.find(by::label("Pay now")).text(), "Pay");
    EXPECT_TRUE(screen.find("Pay").isDisabled()) << "disabled reaches down from the button";
    EXPECT_EQ(screen.find("Pay").ancestor(by::type("Sheet")).kind(), Kind::vstack);
    EXPECT_THROW((void)screen.props<TextProps>(), InspectError);
    const std::string outline = describe(tree);
    EXPECT_TRUE(has(outline, "vstack [Sheet]")) << outline;
    EXPECT_TRUE(has(outline, "disabled")) << outline;
    EXPECT_TRUE(has(outline, "\"Pay\"")) << outline;
}

}  // namespace
}  // namespace platform::view
