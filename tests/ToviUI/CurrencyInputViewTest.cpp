// The custom amount row: what shows below it for an amount, and how it reacts to typing and to
// its clear button.

#include <gtest/gtest.h>

#include "ToviUI/CurrencyInputView.hpp"
#include "ToviUI/ToviDesignSystem.hpp"
#include "platform/testing/ManualMainQueue.hpp"
#include "platform/testing/ScopedLocale.hpp"
#include "platform/view/ScreenHost.hpp"

namespace {

using tovi::CurrencyInputView;
using tovi::CustomCurrencyInputUiModel;
using Tiers = std::vector<tovi::ReloadBucketUiModel>;
using namespace platform::view;

const CustomCurrencyInputUiModel kRange(500, 10000, Tiers{{"b", 2000, 300}, {"a", 1000, 100}});

TEST(CurrencyInputView, MessageAndHintForAnAmount) {
    constexpr std::nullopt_t none = std::nullopt;
    struct Row {
        CustomCurrencyInputUiModel range;
        double dollars;
        std::optional<std::string> message;
        std::optional<std::string> hint;
        const char* why;
    } const rows[] = {
        {kRange, 15.00, none, "+ $1.00 bonus", "between the tiers: the lower one"},
        {kRange, 20.00, none, "+ $3.00 bonus", "exactly on the higher tier"},
        {kRange, 9.99, none, none, "below every tier"},
        {kRange, 100.00, none, "+ $3.00 bonus", "the maximum itself passes"},
        {kRange, 100.01, "Amount must be less than $100.00", "+ $3.00 bonus", "one cent above the maximum"},
        {{115, none, none}, 1.15, "Amount must be at least $1.15", none, "1.15 dollars is 114 cents: truncated"},
        {{none, none, Tiers{{"z", 100, 0}}}, 1, none, "+ $0.00 bonus", "a bonus of zero still shows"},
        {{none, none, Tiers{{"x", 1000, 100}, {"y", 1000, 200}}}, 10, none, "+ $2.00 bonus", "equal tiers: the later"},
        {{none, none, std::nullopt}, 50, none, none, "no tiers, no bounds"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(CurrencyInputView::rangeMessage(row.range, row.dollars), row.message) << row.why;
        EXPECT_EQ(CurrencyInputView::bonusHint(row.range, row.dollars), row.hint) << row.why;
    }
}

TEST(CurrencyInputView, ShowsNothingBelowZeroAndClearsWhatWasTyped) {
    platform::ScopedLocale locale{"en_US", "UTC"};
    platform::ManualMainQueueScope main;
    const auto& colors = tovi::ToviDesignSystem::shared().colors;
    auto screen = [](bool selected, std::optional<double> start) {
        return std::make_unique<ScreenHost>([=](Scope& s) {
            return s.view(CurrencyInputView{s.state("amount", start).binding(), selected, kRange});
        });
    };
    auto outline = [](ScreenHost& host) {
        return inspect(host.tree()).find(by::kind(Kind::shape)).props<ShapeProps>().stroke;
    };

    auto zero = screen(false, 0);
    EXPECT_EQ(inspect(zero->tree()).texts(), std::vector<std::string>{}) << "no clear button, message or hint";
    EXPECT_EQ(outline(*zero), (Stroke{colors.borders.branded, 1}));

    auto typed = screen(true, std::nullopt);
    EXPECT_EQ(outline(*typed), (Stroke{colors.brand.primary, 2}));
    ASSERT_TRUE(typed->type(HostTarget::id("currencyInput.amount"), "100.01"));
    main->runUntilIdle();
    EXPECT_EQ(inspect(typed->tree()).texts(),
              (std::vector<std::string>{"Amount must be less than $100.00", "+ $3.00 bonus"}));
    ASSERT_TRUE(typed->tap(HostTarget::id("currencyInput.clear")));
    main->runUntilIdle();
    EXPECT_EQ(inspect(typed->tree()).texts(), std::vector<std::string>{});
    const auto field = inspect(typed->tree()).find(by::id("currencyInput.amount")).props<TextFieldProps>().field;
    EXPECT_EQ(field->text(), "") << "the value cleared from outside empties the text";
}

}  // namespace
