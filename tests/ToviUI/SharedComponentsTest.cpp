#include <gtest/gtest.h>

#include <string>

#include "ToviUI/FlipAnimation.hpp"
#include "ToviUI/SheetHeader.hpp"
#include "ToviUI/ToviActionView.hpp"
#include "ToviUI/ToviDesignSystem.hpp"
#include "ToviUI/ToviErrorView.hpp"
#include "ToviUI/ToviImage.hpp"
#include "ToviUI/ToviNavigationBar.hpp"
#include "ToviUI/ToviTheme.hpp"
#include "platform/view/Inspect.hpp"
#include "platform/view/View.hpp"

namespace tovi {
namespace {

using namespace platform::view;

class ComponentsTest : public ::testing::Test {
protected:
    void TearDown() override { ToviTheme::set(); }
    const ToviDesignSystem& ds = ToviDesignSystem::shared();
    int taps = 0;
    std::function<void()> count() {
        return [this] { ++taps; };
    }
};

TEST_F(ComponentsTest, ActionViewRowOrderFontsAndTap) {
    Node view = ToviActionView{.icon = ToviImage{ToviImageSource::autopay},
                               .label = "Auto reload",
                               .subtitle = "Off",
                               .endSlot = [] { return Text("$25"); },
                               .onClick = count()};
    auto screen = inspect(view);
    EXPECT_EQ(screen.texts(), (std::vector<std::string>{"Auto reload", "Off", "$25"}));
    EXPECT_EQ(screen.find("Auto reload").font(), ds.fonts.body.medium);
    EXPECT_EQ(screen.find("Off").font(), ds.fonts.subhead);
    EXPECT_EQ(screen.find("Off").foreground(), ds.colors.text.secondary);

    auto images = screen.findAll(by::type("ToviImage"));
    ASSERT_EQ(images.size(), 2U);
    EXPECT_EQ(images[0].props<ImageProps>().source.name, "auto_pay");
    EXPECT_EQ(images[0].frame(), (Frame{.width = 24, .height = 24}));
    EXPECT_EQ(images[0].foreground(), ds.colors.brand.primary);
    EXPECT_EQ(images[1].props<ImageProps>().source.name, "chevron_right") << "the chevron comes last";
    EXPECT_EQ(images[1].frame(), (Frame{.width = 24, .height = 24}));

    auto row = screen.find("Auto reload").ancestor(by::kind(Kind::hstack));
    EXPECT_EQ(row.props<StackProps>().spacing, 6);
    EXPECT_EQ(row.frame()->minHeight, 50);
    EXPECT_TRUE(row->contentShapeRectangle) << "the whole row is tappable";
    EXPECT_EQ(row.opacity(), 1);
    EXPECT_EQ(inspect(Node(view).pressed()).find(by::kind(Kind::hstack)).opacity(), 0.5);

    EXPECT_TRUE(screen.find("$25").tap());
    EXPECT_TRUE(images[1].tap());
    EXPECT_EQ(taps, 2);
}

TEST_F(ComponentsTest, ActionViewWithoutOptionalPartsShowsLabelAndChevron) {
    auto screen = inspect(ToviActionView{.label = "Add card", .onClick = count()});
    EXPECT_EQ(screen.texts(), (std::vector<std::string>{"Add card"}));
    auto images = screen.findAll(by::kind(Kind::image));
    ASSERT_EQ(images.size(), 1U);
    EXPECT_EQ(images[0].props<ImageProps>().source.name, "chevron_right");
}

TEST_F(ComponentsTest, SheetHeaderButtonsAppearOnlyForTheirClosures) {
    int back = 0;
    int done = 0;
    auto both = inspect(SheetHeader{"Reload", [&] { ++back; }, [&] { ++done; }});
    EXPECT_TRUE(both.find(by::id("sheetHeader.back")).tap());
    EXPECT_TRUE(both.find(by::id("sheetHeader.done")).tap());
    EXPECT_EQ(back, 1);
    EXPECT_EQ(done, 1);
    EXPECT_EQ(both.find(by::id("sheetHeader.back")).frame(), (Frame{.width = 24, .height = 24}));
    EXPECT_EQ(both.find(by::id("sheetHeader.back")).find(by::kind(Kind::image)).foreground(), ds.colors.text.primary);

    auto titleOnly = inspect(SheetHeader{"Reload"});
    EXPECT_EQ(titleOnly.texts(), (std::vector<std::string>{"Reload"}));
    EXPECT_FALSE(titleOnly.has(by::kind(Kind::button)));
    EXPECT_FALSE(titleOnly.has(by::kind(Kind::image)));
    // The empty places keep their width so the title stays centred.
    const auto& row = titleOnly.node().children();
    EXPECT_EQ(inspect(row.front()).frame(), (Frame{.width = 24, .height = 24}));
    EXPECT_EQ(inspect(row.back()).frame(), (Frame{.width = 24, .height = 24}));

    auto backOnly = inspect(SheetHeader{"Reload", [] {}});
    EXPECT_TRUE(backOnly.has(by::id("sheetHeader.back")));
    EXPECT_FALSE(backOnly.has(by::id("sheetHeader.done")));
}

TEST_F(ComponentsTest, ErrorViewTextsFontsAndRetry) {
    auto screen = inspect(ToviErrorView{count()});
    EXPECT_EQ(screen.texts(), (std::vector<std::string>{"Please try again.",
                                                        "There was an error loading balance information.", "Retry"}));
    auto title = screen.find("Please try again.");
    EXPECT_EQ(title.font(), ds.fonts.title.medium);
    EXPECT_EQ(title.foreground(), ds.colors.text.bold);
    EXPECT_EQ(title.padding(), EdgeInsets::on(Edge::bottom, 4));
    auto detail = screen.find("There was an error loading balance information.");
    EXPECT_EQ(detail.font(), ds.fonts.body.medium);
    EXPECT_EQ(detail.foreground(), ds.colors.text.primary);
    EXPECT_EQ(detail.padding(), EdgeInsets::on(Edge::bottom, 20));

    auto icon = screen.find(by::type("ToviImage"));
    EXPECT_EQ(icon.props<ImageProps>().source.name, "error");
    EXPECT_EQ(icon.props<ImageProps>().renderingMode, RenderingMode::templated);
    EXPECT_EQ(icon.foreground(), ds.colors.icons.error);
    EXPECT_EQ(icon.frame(), (Frame{.width = 40, .height = 40}));
    auto circle = screen.find(by::kind(Kind::shape));
    EXPECT_EQ(circle.props<ShapeProps>().cornerRadius, 38);
    EXPECT_EQ(circle.frame(), (Frame{.width = 76, .height = 76}));
    EXPECT_EQ(circle.parent()->padding(), EdgeInsets::on(Edge::bottom, 20));

    EXPECT_TRUE(screen.find(by::type("ToviButton")).tap());
    EXPECT_EQ(taps, 1);
}

TEST_F(ComponentsTest, LiteralBadgeColourIgnoresBranding) {
    ToviTheme::set(BrandColors(Color::hex("#00FF00"), Color::hex("#0000FF")));
    auto screen = inspect(ToviErrorView{[] {}});
    EXPECT_EQ(screen.find(by::kind(Kind::shape)).props<ShapeProps>().fill, Paint(Color::hex("#F2A4AA")));
    // The retry button follows the brand.
    EXPECT_EQ(screen.find(by::type("ToviButton")).find(by::kind(Kind::shape)).props<ShapeProps>().fill,
              Paint(Color::hex("#00FF00")));
}

TEST_F(ComponentsTest, NavigationBarGivesInlineTitleAndSlots) {
    Node content = Text("body");
    Node plain = toviNavigationBar(content, "Wallet");
    ASSERT_TRUE(plain->navigation.has_value());
    EXPECT_EQ(plain->navigation->title, "Wallet");
    EXPECT_EQ(plain->navigation->displayMode, TitleDisplayMode::inlined);
    EXPECT_FALSE(plain->navigation->leading.has_value());
    EXPECT_FALSE(plain->navigation->trailing.has_value());

    Node both = toviNavigationBar(content, "Wallet", {.leading = Text("L"), .trailing = Button("Done", count())});
    auto screen = inspect(both);
    EXPECT_EQ(screen.texts(), (std::vector<std::string>{"body", "L", "Done"}));
    EXPECT_TRUE(screen.find("Done").tap());
    EXPECT_EQ(taps, 1);
    EXPECT_FALSE(toviNavigationBar(content, "W", {.trailing = Text("T")})->navigation->leading.has_value());
    EXPECT_FALSE(content->navigation.has_value()) << "the original view is a value and stays untouched";
}

TEST_F(ComponentsTest, FlipTriggersOnlyWhenTheItemChanges) {
    Node a = flip(Text("card"), 1);
    Node same = flip(Text("card"), 1);
    Node other = flip(Text("card"), 2);
    ASSERT_TRUE(a->transition.has_value());
    EXPECT_EQ(a->transition->duration, 0.5);
    EXPECT_EQ(a->transition->options, 0x200000U);
    EXPECT_EQ(a->transition->trigger, same->transition->trigger);
    EXPECT_NE(a->transition->trigger, other->transition->trigger);
    EXPECT_EQ(a->viewType, "FlipWrapper");
    EXPECT_EQ(inspect(a).texts(), (std::vector<std::string>{"card"}));
    EXPECT_NE(flip(Text("x"), std::string("front"))->transition->trigger,
              flip(Text("x"), std::string("back"))->transition->trigger);
}

}  // namespace
}  // namespace tovi
