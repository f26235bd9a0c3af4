#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ToviUI/ToviDesignSystem.hpp"
#include "ToviUI/ToviLocalization.hpp"
#include "ToviUI/ToviTransactionView.hpp"
#include "ToviUI/TransactionHistoryTable.hpp"
#include "platform/view/Inspect.hpp"
#include "platform/view/View.hpp"

namespace tovi {
namespace {

using namespace platform::view;

TEST(TransactionRow, AmountMarkFollowsIsCreditAndKeepsTheBackendSign) {
    struct Row {
        std::optional<bool> isCredit;
        const char* amount;
        const char* shown;
    };
    const Row rows[] = {
        {true, "$25.00", "+ $25.00"},
        {false, "$7.32", "- $7.32"},
        {std::nullopt, "$5.00", "$5.00"},  // the record did not say: no mark
        {false, "-$5.75", "- -$5.75"},     // the mark is added to the text as it stands
    };
    for (const auto& row : rows) {
        auto screen = inspect(ToviTransactionView{{"t", "Latte", "", row.amount, row.isCredit}});
        EXPECT_EQ(screen.texts().back(), row.shown) << row.amount;
    }
}

TEST(TransactionRow, DebitAndCreditShareColoursAndTheDateLineIsSecondary) {
    const auto& ds = ToviDesignSystem::shared();
    auto credit = inspect(ToviTransactionView{testTransactions()[0]});
    EXPECT_EQ(credit.find("+ $25.00").foreground(), ds.colors.text.primary) << "no green for credits";
    EXPECT_EQ(credit.find("+ $25.00").font(), Font::headline());
    EXPECT_EQ(credit.find("May 17 \u2022 9:32 AM").foreground(), ds.colors.text.secondary);
    EXPECT_EQ(credit.find("Add Funds").font(), ds.fonts.title.smallSemiBold);
    EXPECT_EQ(credit.find("Add Funds").ancestor(by::kind(Kind::vstack)).props<StackProps>().spacing, 4);
}

TEST(TransactionHistory, RowsInOrderOrTheEmptyStateUnderTheTitle) {
    const auto& ds = ToviDesignSystem::shared();
    auto empty = inspect(TransactionHistoryTable{});
    EXPECT_EQ(empty.texts(), (std::vector<std::string>{"Transaction History", "No transactions yet"}));
    EXPECT_EQ(empty.find("Transaction History").foreground(), Color::hex("#333333")) << "a fixed grey, not a token";
    EXPECT_EQ(empty.find("Transaction History").font(), ds.fonts.title.smallMedium);
    EXPECT_EQ(empty.find("No transactions yet").frame()->height, 280);

    auto table = inspect(TransactionHistoryTable{{testTransactions()[1], {"x", "Refund", "", "$1.00", true}}});
    EXPECT_FALSE(table.has("No transactions yet"));
    auto rows = table.findAll(by::type("ToviTransactionView"));
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0]->identity, "2");
    EXPECT_EQ(rows[0].padding().top, 20);
    EXPECT_EQ(rows[1].texts(), (std::vector<std::string>{"Refund", "", "+ $1.00"})) << "a date that did not parse";
}

TEST(TransactionHistory, LiteralsAreKeysAHostMayTranslate) {
    ToviLocalization::set({{"Transaction History", "Historique"}, {"Works at any %@ shop", "Partout chez %@"}});
    auto screen = inspect(TransactionHistoryTable{});
    EXPECT_TRUE(screen.has("Historique"));
    EXPECT_TRUE(screen.has("No transactions yet")) << "a key without a translation shows itself";
    EXPECT_EQ(localized("Works at any %@ shop", "%@ & Co"), "Partout chez %@ & Co") << "the value is not re-read";
    ToviLocalization::set({});
    EXPECT_EQ(localized("Transaction History"), "Transaction History");
}

}  // namespace
}  // namespace tovi
