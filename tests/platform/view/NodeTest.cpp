#include <gtest/gtest.h>

#include "platform/view/View.hpp"

namespace platform::view {
namespace {

const Color red = Color::rgb(1, 0, 0);

TEST(NodeModifiers, OrderDecidesWhetherALayerOpens) {
    struct Case {
        const char* why;
        Node node;
        std::size_t layers;
    };
    const Case cases[] = {
        {"padding then background share a layer", Text("x").padding(8).background(red), 1},
        {"background then padding: the padding stays clear", Text("x").background(red).padding(8), 2},
        {"two paddings add up in one layer", Text("x").padding(Edge::horizontal, 16).padding(Edge::top, 4), 1},
        {"a second frame wraps the first", Text("x").frame(10, 10).frame(Frame{.maxWidth = infinity}), 2},
        {"frame after clip wraps", Text("x").clipShape(Circle()).frame(5, 5), 2},
        {"full chain in order", Text("x").padding(1).frame(2, 2).background(red).clipShape(Circle()).opacity(0.5), 1},
        {"two blurs", Text("x").blur(1).blur(2), 2},
    };
    for (const Case& c : cases) EXPECT_EQ(c.node->layers.size(), c.layers) << c.why;
}

TEST(NodeModifiers, PaddingAddsPerEdge) {
    Node n = Text("x").padding(Edge::horizontal, 16).padding(Edge::top, 4).padding(2);
    EXPECT_EQ(n->layers.at(0).padding, (EdgeInsets{6, 18, 2, 18}));
}

TEST(NodeModifiers, EnvironmentNearestTheContentWins) {
    Node n =
        Text("x").font(Font::system(12)).font(Font::system(30)).foregroundColor(red).foregroundColor(Color::black());
    EXPECT_EQ(n->env.font, Font::system(12));
    EXPECT_EQ(n->env.foreground, red);
}

TEST(NodeValues, CopiesAreIndependent) {
    Node original = Text("x").padding(4);
    Node copy = original;
    EXPECT_TRUE(copy.sharesDataWith(original));
    copy.padding(10).accessibilityIdentifier("copy");
    EXPECT_EQ(original->layers.at(0).padding, EdgeInsets::on(Edge::all, 4));
    EXPECT_TRUE(original->accessibilityId.empty());
    EXPECT_EQ(copy->layers.at(0).padding, EdgeInsets::on(Edge::all, 14));
}

TEST(NodeValues, ChildrenKeepOrderAndSkipEmptyNodes) {
    Node stack = VStack({Text("a"), Node{}, EmptyView(), Text("b")});
    ASSERT_EQ(stack.children().size(), 2U);
    EXPECT_EQ(stack.children()[1]->as<TextProps>()->plain(), "b");
}

TEST(NodeButton, StyleIsAppliedForTheCurrentPressedState) {
    std::vector<bool> calls;
    ButtonStyle style = [&](const Node& label, bool pressed) {
        calls.push_back(pressed);
        Node body = label;
        return body.opacity(pressed ? 0.5 : 1);
    };
    Node button = Button("Go", [] {}).buttonStyle(style);
    EXPECT_EQ(button.children().at(0)->layers.at(0).opacity, 1);
    button.pressed();
    EXPECT_EQ(button.children().at(0)->layers.at(0).opacity, 0.5);
    EXPECT_EQ(calls, (std::vector<bool>{false, true}));
    EXPECT_EQ(std::get<ButtonProps>(button->payload).label->as<TextProps>()->plain(), "Go");
}

TEST(NodeDeathTest, KindSpecificModifierOnAnotherKindAborts) {
    EXPECT_DEATH({ Node n = Text("x").spacing(3); }, "spacing does not apply to a text node");
    EXPECT_DEATH({ Node n = VStack({}).fill(red); }, "fill does not apply to a vstack node");
}

TEST(Path, TangentArcsBecomeLinesAndArcs) {
    Path p;
    p.move({0, 10}).arcTo({0, 0}, {10, 0}, 10).arcTo({20, 0}, {20, 10}, 5).close();
    // The first corner turns right (clockwise on screen), like the second.
    EXPECT_EQ(p.svgData(), "M0 10 L0 10 A10 10 0 0 1 10 0 L15 0 A5 5 0 0 1 20 5 Z");
}

TEST(Path, CounterClockwiseAndDegenerateArcs) {
    Path ccw;
    ccw.move({0, 0}).arcTo({10, 0}, {10, -10}, 2);
    EXPECT_EQ(ccw.svgData(), "M0 0 L8 0 A2 2 0 0 0 10 -2");
    Path collinear;
    collinear.move({0, 0}).arcTo({5, 0}, {10, 0}, 3);
    EXPECT_EQ(collinear.svgData(), "M0 0 L5 0");
    Path zeroRadius;
    zeroRadius.move({0, 0}).arcTo({5, 0}, {5, 5}, 0);
    EXPECT_EQ(zeroRadius.svgData(), "M0 0 L5 0");
}

TEST(Path, NumbersAreRoundedToThreeDecimals) {
    Path p;
    p.move({1.0 / 3, -0.0000001}).line({2.5, 1e-9});
    EXPECT_EQ(p.svgData(), "M0.333 0 L2.5 0");
}

}  // namespace
}  // namespace platform::view
