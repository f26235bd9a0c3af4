#include <gtest/gtest.h>

#include "ToviUI/AlertArrowDownShape.hpp"
#include "ToviUI/AlertArrowUpShape.hpp"
#include "ToviUI/AlertView.hpp"
#include "ToviUI/ToviAssets.hpp"
#include "ToviUI/ToviDesignSystem.hpp"
#include "ToviUI/ToviTheme.hpp"
#include "platform/view/HtmlRenderer.hpp"
#include "platform/view/Inspect.hpp"
#include "platform/view/View.hpp"

namespace tovi {
namespace {

using namespace platform::view;

// The arrow tip sits mid-edge, the corners are rounded with the given radius.
TEST(AlertArrowShapes, ArrowPointsForAGivenRectangle) {
    EXPECT_EQ((AlertArrowDownShape{12, 6}.path(Rect{0, 0, 200, 80})),  // tip at the bottom middle, body 74 high
              (Path()
                   .move({94, 74})
                   .line({100, 80})
                   .line({106, 74})
                   .arcTo({200, 74}, {200, 0}, 12)
                   .arcTo({200, 0}, {0, 0}, 12)
                   .arcTo({0, 0}, {0, 74}, 12)
                   .arcTo({0, 74}, {94, 74}, 12)
                   .close()));
    EXPECT_EQ((AlertArrowUpShape{10, 8}.path(Rect{0, 0, 120, 60})),  // tip at the top middle, body from 8 down
              (Path()
                   .move({52, 8})
                   .line({60, 0})
                   .line({68, 8})
                   .arcTo({120, 8}, {120, 60}, 10)
                   .arcTo({120, 60}, {0, 60}, 10)
                   .arcTo({0, 60}, {0, 8}, 10)
                   .arcTo({0, 8}, {52, 8}, 10)
                   .close()));
}

TEST(AlertArrowShapes, ShapeNodesDrawThePathForTheirRectangle) {
    Node node = AlertArrowUpShape{12, 6}.shape();
    const auto& props = inspect(node).props<ShapeProps>();
    EXPECT_EQ(props.shape, ShapeKind::path);
    EXPECT_EQ(props.pathIn(Rect{0, 0, 50, 30}), (AlertArrowUpShape{12, 6}.path(Rect{0, 0, 50, 30})));
    EXPECT_EQ(node->viewType, "AlertArrowUpShape");
    EXPECT_EQ(AlertArrowDownShape{}.shape()->viewType, "AlertArrowDownShape");
}

class AlertViewTest : public ::testing::Test {
protected:
    void TearDown() override { ToviTheme::set(); }
    const ToviColorScheme& c = ToviDesignSystem::shared().colors;
};

TEST_F(AlertViewTest, TypeChoosesBadgeIconAndStroke) {
    struct Case {
        AlertViewType type;
        const char* icon;
        Color badge;
        Color stroke;
    };
    const Case cases[] = {
        {AlertViewType::bonus, "sparkle", c.background.promoIcon, c.borders.branded},
        {AlertViewType::alert, "alert", c.background.alert, c.background.alert},
    };
    for (const Case& k : cases) {
        auto view = inspect(AlertView{{"Earn 5%", "On every reload", k.type, AlertShape::downArrow}});
        auto icon = view.find(by::type("ToviImage"));
        EXPECT_EQ(icon.props<ImageProps>().source.name, k.icon);
        EXPECT_EQ(icon.frame(), (Frame{.width = 28, .height = 28}));
        EXPECT_EQ(icon.foreground(), c.icons.promo);

        auto badge = icon.parent().value();
        EXPECT_EQ(badge.frame(), (Frame{.width = 48, .height = 48}));
        const ShapeProps* clip = nullptr;
        for (const Layer& layer : badge->layers) {
            if (layer.clip) clip = (*layer.clip)->as<ShapeProps>();
        }
        ASSERT_NE(clip, nullptr);
        EXPECT_EQ(clip->cornerRadius, 24);
        EXPECT_EQ(clip->cornerStyle, CornerStyle::continuous);
        EXPECT_EQ(std::get<Color>(*badge.find(by::kind(Kind::shape)).props<ShapeProps>().fill), k.badge);

        const auto& bubble = view.find(by::type("AlertArrowDownShape")).props<ShapeProps>();
        EXPECT_EQ(bubble.fill, Paint(c.background.primary));
        EXPECT_EQ(bubble.stroke, (Stroke{k.stroke, 1, 10}));
    }
}

TEST_F(AlertViewTest, ArrowSideDecidesShapeAndPadding) {
    auto up = inspect(AlertView{{"a", std::nullopt, AlertViewType::bonus, AlertShape::upArrow}});
    EXPECT_TRUE(up.has(by::type("AlertArrowUpShape")));
    EXPECT_FALSE(up.has(by::type("AlertArrowDownShape")));
    EXPECT_EQ(up.padding().top, 8);
    EXPECT_EQ(up.padding().bottom, 0);
    EXPECT_EQ(up.frame()->height, 82);

    auto down = inspect(AlertView{{"a", std::nullopt, AlertViewType::bonus, AlertShape::downArrow}});
    EXPECT_TRUE(down.has(by::type("AlertArrowDownShape")));
    EXPECT_EQ(down.padding().top, 0);
    EXPECT_EQ(down.padding().bottom, 8);
}

TEST_F(AlertViewTest, TextsUseHeadlineAndCaptionAndSecondaryIsOptional) {
    auto two = inspect(AlertView{{"Low balance", "Reload now", AlertViewType::alert, AlertShape::upArrow}});
    EXPECT_EQ(two.texts(), (std::vector<std::string>{"Low balance", "Reload now"}));
    EXPECT_EQ(two.find("Low balance").font(), Font::headline());
    EXPECT_EQ(two.find("Low balance").foreground(), c.text.primary);
    EXPECT_EQ(two.find("Reload now").font(), Font::caption());
    EXPECT_EQ(two.find("Reload now").foreground(), c.text.secondary);

    auto one = inspect(AlertView{{"Low balance", std::nullopt, AlertViewType::alert, AlertShape::upArrow}});
    EXPECT_EQ(one.texts(), (std::vector<std::string>{"Low balance"}));
}

TEST_F(AlertViewTest, BonusFollowsBrandingAtTheNextBuild) {
    const Color p = Color::hex("#AA3300");
    ToviTheme::set(BrandColors(p));
    auto view = inspect(AlertView{{"Bonus", std::nullopt, AlertViewType::bonus, AlertShape::upArrow}});
    EXPECT_EQ(view.find(by::type("AlertArrowUpShape")).props<ShapeProps>().stroke->paint, Paint(p.opacity(0.1)));
    EXPECT_EQ(view.find(by::type("ToviImage")).foreground(), p);

    const std::string html =
        renderHtml(AlertView{{"Bonus", "x", AlertViewType::bonus, AlertShape::upArrow}}, toviHtmlOptions());
    EXPECT_NE(html.find("<path d=\"M"), std::string::npos) << "the arrow is drawn as a real path";
}

}  // namespace
}  // namespace tovi
