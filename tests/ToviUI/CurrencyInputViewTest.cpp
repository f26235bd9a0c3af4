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
using tovi::ReloadBucketUiModel;
using namespace platform::view;

const CustomCurrencyInputUiModel kRange(500, 10000,
                                        std::vector<ReloadBucketUiModel>{{"b", 2000, 300}, {"a", 1000, 100}});

TEST(CurrencyInputView, MessageAndHintForAnAmount) {
    struct Row {
        CustomCurrencyInputUiModel range;
        double dollars;
        std::optional<std::string> message;
        std::optional<std::string> hint;
        const char* why;
    };
    const CustomCurrencyInputUiModel zeroBonus(std::nullopt, std::nullopt,
                                               std::vector<ReloadBucketUiModel>{{"z", 100, 0}});
    const CustomCurrencyInputUiModel twins(std::nullopt, std::nullopt,
                                           std::vector<ReloadBucketUiModel>{{"x", 1000, 100}, {"y", 1000, 200}});
    const Row rows[] = {
        {kRange, 15.00, std::nullopt, "+ $1.00 bonus", "between the tiers: the lower one"},
        {kRange, 20.00, std::nullopt, "+ $3.00 bonus", "exactly on the higher tier"},
        {kRange, 9.99, std::nullopt, std::nullopt, "below every tier"},
        {kRange, 100.00, std::nullopt, "+ $3.00 bonus", "the maximum itself passes"},
        {kRange, 100.01, "Amount must be less than $100.00", "+ $3.00 bonus", "one cent above the maximum"},
        {kRange, 4.99, "Amount must be at least $5.00", std::nullopt, "one cent below the minimum"},
        {CustomCurrencyInputUiModel(115, std::nullopt, std::nullopt), 1.15, "Amount must be at least $1.15",
         std::nullopt, "1.15 dollars is 114 cents: truncated, not rounded"},
        {zeroBonus, 1, std::nullopt, "+ $0.00 bonus", "a bonus of zero still shows"},
        {twins, 10, std::nullopt, "+ $2.00 bonus", "equal tiers: the later one"},
        {CustomCurrencyInputUiModel(std::nullopt, std::nullopt, std::nullopt), 50, std::nullopt, std::nullopt,
         "no tiers, no bounds"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(CurrencyInputView::rangeMessage(row.range, row.dollars), row.message) << row.why;
        EXPECT_EQ(CurrencyInputView::bonusHint(row.range, row.dollars), row.hint) << row.why;
    }
}

// The row with its own amount state, as a sheet holds it.
struct Screen {
    Screen(bool selected, std::optional<double> start)
        : host([this, selected, start](Scope& s) {
              auto value = s.state("amount", start);
              amount = value.binding();
              return s.view(
                  CurrencyInputView{.value = value.binding(), .isSelected = selected, .validCurrencyRange = kRange});
          }) {}

    [[nodiscard]] ViewRef tree() { return inspect(host.tree()); }
    [[nodiscard]] Stroke outline() {
        for (const ViewRef& shape : tree().findAll(by::kind(Kind::shape))) {
            if (auto stroke = shape.props<ShapeProps>().stroke) return *stroke;
        }
        return {};
    }

    platform::ScopedLocale locale{"en_US", "UTC"};
    platform::ManualMainQueueScope main;
    std::optional<Binding<std::optional<double>>> amount;
    ScreenHost host;
};

TEST(CurrencyInputView, ZeroShowsNothingBelowAndTheOutlineFollowsTheSelection) {
    const auto& colors = tovi::ToviDesignSystem::shared().colors;
    Screen unselected(false, 0);
    EXPECT_FALSE(unselected.tree().has(by::id("currencyInput.clear")));
    EXPECT_EQ(unselected.tree().texts(), std::vector<std::string>{}) << "neither message nor hint for zero";
    EXPECT_EQ(unselected.outline(), (Stroke{colors.borders.branded, 1}));
    EXPECT_EQ(Screen(true, 0).outline(), (Stroke{colors.brand.primary, 2}));
}

TEST(CurrencyInputView, TypingShowsTheHintAndClearEmptiesTheField) {
    Screen screen(true, std::nullopt);
    ASSERT_TRUE(screen.host.type(HostTarget::id("currencyInput.amount"), "100.01"));
    screen.main->runUntilIdle();
    EXPECT_EQ(screen.tree().find(by::id("currencyInput.message")).text(), "Amount must be less than $100.00");
    EXPECT_EQ(screen.tree().find(by::id("currencyInput.hint")).text(), "+ $3.00 bonus");

    ASSERT_TRUE(screen.tree().find(by::id("currencyInput.clear")).tap());
    screen.main->runUntilIdle();
    EXPECT_EQ(screen.amount->get(), std::nullopt);
    EXPECT_FALSE(screen.tree().has(by::id("currencyInput.hint")));
    const auto field = screen.tree().find(by::id("currencyInput.amount")).props<TextFieldProps>().field;
    EXPECT_EQ(field->text(), "") << "the value cleared from outside empties the text";
}

}  // namespace
