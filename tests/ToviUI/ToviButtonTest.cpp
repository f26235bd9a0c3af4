#include <gtest/gtest.h>

#include <vector>

#include "ToviUI/ToviAssets.hpp"
#include "ToviUI/ToviBaseButtonStyle.hpp"
#include "ToviUI/ToviButton.hpp"
#include "ToviUI/ToviDesignSystem.hpp"
#include "ToviUI/ToviImage.hpp"
#include "ToviUI/ToviTheme.hpp"
#include "platform/view/HtmlRenderer.hpp"
#include "platform/view/Inspect.hpp"
#include "platform/view/View.hpp"

namespace tovi {
namespace {

using namespace platform::view;

// The shapes a button draws, back to front: the fill and the two covers.
std::vector<ShapeProps> shapesOf(const Node& button) {
    std::vector<ShapeProps> shapes;
    for (const ViewRef& s : inspect(button).findAll(by::kind(Kind::shape))) shapes.push_back(s.props<ShapeProps>());
    return shapes;
}

class ToviButtonTest : public ::testing::Test {
protected:
    void TearDown() override { ToviTheme::set(); }
    int taps = 0;
    std::function<void()> count() {
        return [this] { ++taps; };
    }
};

TEST_F(ToviButtonTest, TapsReachTheActionOnlyWhenEnabledAndNotLoading) {
    struct Case {
        bool enabled;
        bool loading;
        int expectedTaps;
    };
    for (const Case c : {Case{true, false, 1}, Case{false, false, 0}, Case{true, true, 0}, Case{false, true, 0}}) {
        taps = 0;
        Node button = ToviButton{.label = "Add", .enabled = c.enabled, .isLoading = c.loading, .onClick = count()};
        auto screen = inspect(button);
        // A finger lands on whatever the button shows: the label text or the spinner.
        auto target = c.loading ? screen.find(by::kind(Kind::progress)) : screen.find("Add");
        EXPECT_EQ(target.tap(), c.expectedTaps == 1);
        EXPECT_EQ(screen.tap(), c.expectedTaps == 1);
        EXPECT_EQ(taps, 2 * c.expectedTaps) << "enabled " << c.enabled << " loading " << c.loading;
    }
}

TEST_F(ToviButtonTest, CornerRadiusArgumentHasNoEffect) {
    const auto options = toviHtmlOptions();
    const std::string r8 = renderHtml(ToviButton{.label = "Pay", .cornerRadius = 8}, options);
    EXPECT_EQ(r8, renderHtml(ToviButton{.label = "Pay", .cornerRadius = 40}, options));
    EXPECT_EQ(r8, renderHtml(ToviButton{.label = "Pay"}, options));
    for (const ShapeProps& s : shapesOf(ToviButton{.label = "Pay", .cornerRadius = 40})) {
        EXPECT_EQ(s.shape, ShapeKind::roundedRectangle);
        EXPECT_EQ(s.cornerRadius, 16);
    }
}

TEST_F(ToviButtonTest, LoadingShowsOnlyAWhiteSpinner) {
    Node button = ToviButton{.label = "Pay",
                             .isLoading = true,
                             .leftIcon = ToviImage{ToviImageSource::plus},
                             .rightIcon = ToviImage{ToviImageSource::chevronRight}};
    auto screen = inspect(button);
    EXPECT_TRUE(screen.texts().empty());
    EXPECT_FALSE(screen.has(by::kind(Kind::image)));
    auto spinner = screen.find(by::kind(Kind::progress));
    EXPECT_FALSE(spinner.props<ProgressProps>().value.has_value());
    EXPECT_EQ(spinner.tintColor(), Color::white());
    EXPECT_EQ(button->animations.at(0).value, "isLoading");
    EXPECT_EQ(button->animations.at(0).animation.curve, Animation::Curve::easeInOut);
}

TEST_F(ToviButtonTest, LabelRowHoldsIconsAroundTheBoldLabel) {
    Node button = ToviButton{.label = "Add card",
                             .leftIcon = ToviImage{ToviImageSource::plus},
                             .rightIcon = ToviImage{ToviImageSource::chevronRight}};
    auto screen = inspect(button);
    auto label = screen.find("Add card");
    EXPECT_EQ(label.font(), ToviDesignSystem::shared().fonts.body.bold);
    auto row = label.ancestor(by::kind(Kind::hstack));
    EXPECT_EQ(row.props<StackProps>().spacing, 8);
    ASSERT_EQ(row.node().children().size(), 3U);
    EXPECT_EQ(row.node().children()[0]->as<ImageProps>()->source.name, "plus");
    EXPECT_EQ(row.node().children()[2]->as<ImageProps>()->source.name, "chevron_right");

    auto bare = inspect(ToviButton{.label = "Go"});
    EXPECT_EQ(bare.find("Go").ancestor(by::kind(Kind::hstack)).node().children().size(), 1U);
}

TEST_F(ToviButtonTest, ColoursDefaultToTheThemeAtBuildTime) {
    const Color brand = Color::hex("#FF5500");
    ToviTheme::set(BrandColors(brand));
    Node branded = ToviButton{.label = "Go"};
    EXPECT_EQ(std::get<Color>(*shapesOf(branded).at(0).fill), brand);
    EXPECT_EQ(inspect(branded).find("Go").foreground(), Color::white());

    const Color own = Color::hex("#00AA00");
    Node explicitColours = ToviButton{.label = "Go", .backgroundColor = own, .labelColor = Color::black()};
    EXPECT_EQ(std::get<Color>(*shapesOf(explicitColours).at(0).fill), own);
    EXPECT_EQ(inspect(explicitColours).find("Go").foreground(), Color::black());
}

TEST(ToviBaseButtonStyle, FillAndCoversFollowPressedAndEnabled) {
    const Color bg = Color::hex("#346ECE");
    struct Case {
        bool pressed;
        bool enabled;
        Color fill;
        Color pressCover;
        Color disabledCover;
    };
    const Case cases[] = {
        {false, true, bg, Color::clear(), Color::clear()},
        {true, true, bg.opacity(0.8), Color::black().opacity(0.2), Color::clear()},
        {false, false, bg, Color::clear(), Color::white().opacity(0.5)},
        {true, false, bg.opacity(0.8), Color::black().opacity(0.2), Color::white().opacity(0.5)},
    };
    for (const Case& c : cases) {
        ToviBaseButtonStyle style{bg, Color::white(), 16, c.enabled};
        Node button = Button(Text("x"), [] {}).buttonStyle(style).pressed(c.pressed);
        auto shapes = shapesOf(button);
        ASSERT_EQ(shapes.size(), 3U);
        EXPECT_EQ(std::get<Color>(*shapes[0].fill), c.fill) << "pressed " << c.pressed;
        EXPECT_EQ(std::get<Color>(*shapes[1].fill), c.pressCover) << "pressed " << c.pressed;
        EXPECT_EQ(std::get<Color>(*shapes[2].fill), c.disabledCover) << "enabled " << c.enabled;
        EXPECT_EQ(inspect(button).find("x").foreground(), Color::white());
    }
}

}  // namespace
}  // namespace tovi
