#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "ToviUI/CurrencyFormat.hpp"
#include "platform/Locale.hpp"
#include "platform/testing/ScopedLocale.hpp"

namespace tovi {
namespace {

TEST(DollarsToCents, TruncatesTowardsZero) {
    EXPECT_EQ(dollarsToCents(1.15), 114) << "1.15 * 100.0 is 114.99999999999999";
    EXPECT_EQ(dollarsToCents(-1.15), -114);
    EXPECT_EQ(dollarsToCents(0.29), 28);
    EXPECT_EQ(dollarsToCents(25.0), 2500);
    EXPECT_EQ(centsToInt32(-2147483648LL), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(centsToInt32(2147483647LL), std::numeric_limits<std::int32_t>::max());
}

TEST(CurrencyFormats, DeviceLocaleForAmountsFixedDollarsForMessages) {
    platform::ScopedLocale locale("de_DE", "Europe/Berlin");
    EXPECT_EQ(formatCurrencyAmount(1234.5), "1.234,50\u00A0€");
    EXPECT_EQ(formatUsdAmount(1234.5), "$1,234.50");
    EXPECT_EQ(formatUsdAmount(5), "$5.00");
}

TEST(CurrencyFormats, NegativeZeroKeepsItsSign) {
    platform::ScopedLocale locale("en_US", "UTC");
    EXPECT_EQ(formatCurrencyAmount(-0.0), "-$0.00");
    EXPECT_EQ(formatCurrencyAmount(-12.3), "-$12.30");
}

TEST(MoneyDeathTest, ConversionsThatDoNotFitStop) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH((void)dollarsToCents(std::nan("")),
                 "^Fatal error: Double value cannot be converted to Int because it is either infinite or NaN\n");
    EXPECT_DEATH((void)dollarsToCents(std::numeric_limits<double>::infinity()), "either infinite or NaN");
    EXPECT_DEATH((void)dollarsToCents(9.3e16),
                 "^Fatal error: Double value cannot be converted to Int because the result would be greater than "
                 "Int.max\n");
    EXPECT_DEATH((void)dollarsToCents(-9.3e16),
                 "^Fatal error: Double value cannot be converted to Int because the result would be less than "
                 "Int.min\n");
    EXPECT_DEATH((void)centsToInt32(2147483648LL), "^Fatal error: Not enough bits to represent the passed value\n");
    EXPECT_DEATH((void)centsToInt32(-2147483649LL), "Not enough bits");
}

}  // namespace
}  // namespace tovi
