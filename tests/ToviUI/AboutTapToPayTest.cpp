#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ToviUI/AboutTapToPayActionView.hpp"
#include "ToviUI/AboutTapToPayInfoView.hpp"
#include "ToviUI/AboutTapToPayLineView.hpp"
#include "ToviUI/ToviDesignSystem.hpp"
#include "platform/testing/ManualMainQueue.hpp"
#include "platform/view/Inspect.hpp"
#include "platform/view/ScreenHost.hpp"
#include "platform/view/View.hpp"

namespace tovi {
namespace {

using namespace platform::view;
using Line = AboutTapToPayLineType;

TEST(AboutTapToPayLine, MerchantNameIsWovenInAsItStands) {
    struct Row {
        Line type;
        const char* merchant;
        const char* text;
        ToviImageSource icon;
    };
    const Row rows[] = {
        {Line::addToWallet, "Tovi", "Tap \u201cAdd to Apple Wallet\u201d button and follow the instructions.",
         ToviImageSource::wallet},  // curly quotes, no name
        {Line::checkout, "tovi CAF\u00c9",
         "Open Apple Wallet and select your tovi CAF\u00c9 card. Tap to checkout when prompted.",
         ToviImageSource::nfc},  // no case change
        {Line::use, "", "Works at any  location that takes NFC payment (Tap to Pay).",
         ToviImageSource::location},  // an empty name leaves two blanks
        {Line::use, "100%@ \"Fresh\"", "Works at any 100%@ \"Fresh\" location that takes NFC payment (Tap to Pay).",
         ToviImageSource::location},  // no quoting, and the name is not read as a template
    };
    for (const auto& row : rows) {
        const auto line = aboutTapToPayLine(row.type, row.merchant);
        EXPECT_EQ(line.text, row.text) << row.merchant;
        EXPECT_EQ(line.icon, row.icon) << row.merchant;
    }
}

TEST(AboutTapToPayInfo, LinesInModelOrderBetweenHeaderAndDisclaimer) {
    const auto& ds = ToviDesignSystem::shared();
    TapToPayUiModel model("Tovi");
    model.lineItems = {Line::use, Line::addToWallet};
    auto sheet = inspect(AboutTapToPayInfoView{model});
    auto lines = sheet.findAll(by::type("AboutTapToPayLineView"));
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].texts()[0], "Where to Use");
    EXPECT_EQ(lines[1]->identity, "addToWallet");
    EXPECT_EQ(lines[0].parent()->props<StackProps>().spacing, 20);
    EXPECT_EQ(sheet.find(by::type("SheetHeader")).padding().bottom, 20);
    EXPECT_EQ(sheet.find(by::type("SheetHeader")).texts(), (std::vector<std::string>{"Add to Apple Wallet"}));
    auto disclaimer = sheet.find(by::textContaining("not a credit product"));
    EXPECT_EQ(disclaimer.font(), ds.fonts.footnote);
    EXPECT_EQ(disclaimer.foreground(), ds.colors.text.secondary);
    auto icon = lines[0].find(by::type("ToviImage"));
    EXPECT_EQ(icon.frame(), (Frame{.width = 33, .height = 33}));
    EXPECT_EQ(icon.foreground(), ds.colors.brand.primary);
    EXPECT_EQ(lines[0].find("Where to Use").font(), ds.fonts.title.medium);
}

TEST(AboutTapToPayAction, TapPresentsTheSheetAtOneLargeDetentWithItsIndicator) {
    platform::ManualMainQueueScope main;
    ScreenHost host([](Scope& s) { return s.view(AboutTapToPayActionView{TapToPayUiModel("Tovi")}); });
    auto row = inspect(host.tree()).find(by::type("ToviActionView"));
    EXPECT_EQ(row.texts(),
              (std::vector<std::string>{"How to use your balance in-store", "Tap your Apple Wallet at the register."}));
    EXPECT_EQ(row.find(by::kind(Kind::image)).props<ImageProps>().source.name, "info.circle");
    EXPECT_FALSE(host.tree()->presentations.at(0).isPresented);

    ASSERT_TRUE(host.tap(HostTarget::text("How to use your balance in-store")));
    main->runUntilIdle();
    const Presentation& sheet = host.tree()->presentations.at(0);
    EXPECT_TRUE(sheet.isPresented);
    EXPECT_EQ(sheet.options.detents, (std::vector<Detent>{Detent::large()}));
    EXPECT_TRUE(sheet.options.dragIndicatorVisible);
    EXPECT_TRUE(inspect(sheet.content).has(by::textContaining("Works at any Tovi location")));

    ASSERT_TRUE(host.dismissSheet());
    main->runUntilIdle();
    EXPECT_FALSE(host.tree()->presentations.at(0).isPresented);
}

}  // namespace
}  // namespace tovi
