#include <gtest/gtest.h>

#include <string>
#include <unordered_set>

#include "ToviUI/CardBrand.hpp"
#include "ToviUI/PaymentMethodUiModel.hpp"
#include "ToviUI/TransactionUiModel.hpp"
#include "platform/Locale.hpp"
#include "platform/testing/ScopedLocale.hpp"

namespace tovi {
namespace {

TEST(CardBrandMapping, ExactCaseSensitiveBackendNames) {
    struct Row {
        const char* backend;
        CardBrand brand;
        const char* display;
    };
    const Row rows[] = {
        {"amex", CardBrand::amex, "American Express"},
        {"mastercard", CardBrand::mastercard, "MasterCard"},
        {"maestro", CardBrand::maestro, "Maestro"},
        {"visa", CardBrand::visa, "Visa"},
        {"visa electron", CardBrand::visaElectron, "Visa Electron"},
        {"discover", CardBrand::discover, "Discover"},
        {"diners", CardBrand::dinersClub, "Diners Club"},
        {"Visa", CardBrand::unknown, "Unknown"},        // case matters
        {"visa ", CardBrand::unknown, "Unknown"},       // no trimming
        {"dinersclub", CardBrand::unknown, "Unknown"},  // the backend says "diners"
        {"", CardBrand::unknown, "Unknown"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(cardBrandFromBackend(row.backend), row.brand) << row.backend;
        EXPECT_EQ(displayName(cardBrandFromBackend(row.backend)), row.display) << row.backend;
    }
}

TEST(PaymentMethodModel, FromRecordIsNeverExpiredAndHashesAllFields) {
    const auto model = makePaymentMethodUiModel({"pm_1", {"discover", "601111", "1117"}});
    EXPECT_EQ(model, (PaymentMethodUiModel{"pm_1", {CardBrand::discover, "601111", "1117"}, false}));
    EXPECT_TRUE(model.isValid());

    auto expired = model;
    expired.isExpired = true;
    EXPECT_FALSE(expired.isValid());
    std::unordered_set<PaymentMethodUiModel> set{model, expired, model};
    EXPECT_EQ(set.size(), 2u);
    EXPECT_NE(std::hash<CardUiModel>{}({CardBrand::visa, "1", "2"}),
              std::hash<CardUiModel>{}({CardBrand::amex, "1", "2"}));
}

class TransactionDates : public ::testing::Test {
protected:
    platform::ScopedLocale locale{"en_US", "America/New_York"};
};

TEST_F(TransactionDates, ParseInUtcAndShowInTheDeviceZone) {
    struct Row {
        const char* created;
        std::optional<std::string> expected;
    };
    const Row rows[] = {
        {"2024-03-01T17:05:09.120Z", "Mar 1 \u2022 12:05 PM"},
        {"2024-03-01T19:05:09.120+0200", "Mar 1 \u2022 12:05 PM"},  // same instant as above
        {"2024-07-04T04:30:00.000Z", "Jul 4 \u2022 12:30 AM"},      // summer time; hours keep a leading zero
        {"2024-01-09T14:00:00.000Z", "Jan 9 \u2022 09:00 AM"},
        {"2024-03-01T17:05:09Z", std::nullopt},      // no fractional seconds
        {"2024-02-30T10:00:00.000Z", std::nullopt},  // no such day
        {"yesterday", std::nullopt},
    };
    for (const auto& row : rows) EXPECT_EQ(transactionDateText(row.created), row.expected) << row.created;
}

TEST_F(TransactionDates, RowsKeepUnparsableDatesAndTheBackendSign) {
    const ToviSharedTransactionResult result{{
        {"t1", "Refund", "2024-03-01T17:05:09.120Z", 1250, true},
        {"t2", "Latte", "not a date", -575, std::nullopt},
    }};
    const auto rows = makeTransactionUiModels(result);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0], (TransactionUiModel{"t1", "Refund", "Mar 1 \u2022 12:05 PM", "$12.50", true}));
    EXPECT_EQ(rows[1], (TransactionUiModel{"t2", "Latte", "", "-$5.75", std::nullopt}));
    EXPECT_NE(std::hash<TransactionUiModel>{}(rows[0]), std::hash<TransactionUiModel>{}(rows[1]));
}

}  // namespace
}  // namespace tovi
