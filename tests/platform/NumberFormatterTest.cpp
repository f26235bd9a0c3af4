#include "platform/NumberFormatter.hpp"
#include "platform/testing/ScopedLocale.hpp"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "platform/Locale.hpp"

namespace {

using platform::NumberFormatter;
using Style = NumberFormatter::Style;

struct CurrencyCase {
    const char* locale;
    double value;
    const char* expected;
    const char* why;
};

constexpr CurrencyCase kCurrencyCases[] = {
    {"en_US", 1234.5, "$1,234.50", "grouping and two digits"},
    {"en_US", -12.3, "-$12.30", "minus before the symbol"},
    {"en_US", -0.0, "-$0.00", "negative zero keeps its sign"},
    {"en_US", 0.125, "$0.12", "half-even rounds the tie down to even"},
    {"en_US", 0.375, "$0.38", "half-even rounds the tie up to even"},
    {"de_DE", 1234.5, "1.234,50\u00A0€", "dot groups, comma decimals, no-break space"},
    {"ja_JP", 1234.5, "￥1,234", "no fraction digits; the tie goes to the even 1234"},
    {"ja_JP", 1235.5, "￥1,236", "no fraction digits; the tie goes to the even 1236"},
};

TEST(NumberFormatter, CurrencyTextPerLocale) {
    for (const auto& c : kCurrencyCases) {
        NumberFormatter formatter(Style::currency, c.locale);
        EXPECT_EQ(formatter.format(c.value), std::optional<std::string>(c.expected)) << c.locale << ": " << c.why;
    }
}

TEST(NumberFormatter, DefaultsFollowTheCurrentLocaleAtCreation) {
    platform::ScopedLocale scope("de_DE", "UTC");
    NumberFormatter formatter(Style::currency);
    EXPECT_EQ(formatter.locale(), "de_DE");
    EXPECT_EQ(formatter.format(1234.5), "1.234,50\u00A0€");
}

TEST(NumberFormatter, CurrencySymbolAndCodeCanBeSet) {
    NumberFormatter formatter(Style::currency, "en_US");
    formatter.setCurrencySymbol("US$");
    EXPECT_EQ(formatter.format(1234.5), "US$1,234.50");
    EXPECT_EQ(formatter.currencySymbol(), "US$");

    NumberFormatter euros(Style::currency, "en_US");
    euros.setCurrencyCode("EUR");
    EXPECT_EQ(euros.currencyCode(), "EUR");
    EXPECT_EQ(euros.format(1234.5), "€1,234.50");

    // An explicit symbol survives a later code change.
    formatter.setCurrencyCode("EUR");
    EXPECT_EQ(formatter.format(2.0), "US$2.00");

    // A symbol that ends in a letter is kept apart from the digits by a no-break space.
    NumberFormatter lettered(Style::currency, "en_US");
    lettered.setCurrencySymbol("USD");
    EXPECT_EQ(lettered.format(2.0), "USD\u00A02.00");
}

TEST(NumberFormatter, FractionDigitsBoundEachOther) {
    NumberFormatter formatter(Style::decimal, "en_US");
    formatter.setMaximumFractionDigits(2);
    EXPECT_EQ(formatter.format(1.0), "1");
    EXPECT_EQ(formatter.format(0.125), "0.12");

    formatter.setMinimumFractionDigits(2);
    EXPECT_EQ(formatter.format(1.0), "1.00");

    // A minimum above the maximum raises the maximum.
    formatter.setMinimumFractionDigits(3);
    EXPECT_EQ(formatter.maximumFractionDigits(), 3);
    EXPECT_EQ(formatter.format(1.5), "1.500");

    // A maximum below the minimum lowers the minimum.
    NumberFormatter dollars(Style::currency, "en_US");
    dollars.setMaximumFractionDigits(0);
    EXPECT_EQ(dollars.minimumFractionDigits(), 0);
    EXPECT_EQ(dollars.format(12.5), "$12");
    EXPECT_EQ(dollars.format(13.5), "$14");
}

TEST(NumberFormatter, GroupingCanBeTurnedOff) {
    NumberFormatter formatter(Style::decimal, "en_US");
    EXPECT_TRUE(formatter.usesGroupingSeparator());
    EXPECT_EQ(formatter.format(1234567.5), "1,234,567.5");
    formatter.setUsesGroupingSeparator(false);
    EXPECT_EQ(formatter.format(1234567.5), "1234567.5");
}

TEST(NumberFormatter, ExplicitSettingsSurviveALocaleChange) {
    NumberFormatter formatter(Style::decimal, "en_US");
    formatter.setMinimumFractionDigits(3);
    formatter.setUsesGroupingSeparator(false);
    formatter.setLocale("de_DE");
    EXPECT_EQ(formatter.format(1234.5), "1234,500");
}

TEST(NumberFormatter, CopiesAreIndependent) {
    NumberFormatter original(Style::currency, "en_US");
    NumberFormatter copy = original;
    copy.setCurrencySymbol("£");
    copy.setMaximumFractionDigits(0);
    EXPECT_EQ(original.format(3.25), "$3.25");
    EXPECT_EQ(copy.format(3.25), "£3");
}

TEST(NumberFormatter, UnreadableLocalesStillFormat) {
    for (const char* locale : {"", "xx_YY", "!!garbage!!", "en_US@@@"}) {
        NumberFormatter formatter(Style::currency, locale);
        const auto text = formatter.format(12.5);
        ASSERT_TRUE(text.has_value()) << locale;
        EXPECT_NE(text->find("12"), std::string::npos) << locale << ": " << *text;
        EXPECT_FALSE(platform::decimalSeparator(locale).empty()) << locale;
    }
}

TEST(NumberFormatter, DecimalSeparatorOfLocale) {
    EXPECT_EQ(platform::decimalSeparator("en_US"), ".");
    EXPECT_EQ(platform::decimalSeparator("de_DE"), ",");
    EXPECT_EQ(platform::decimalSeparator("de-DE"), ",");
    EXPECT_EQ(NumberFormatter(Style::currency, "fr_FR").decimalSeparator(), ",");
    EXPECT_EQ(NumberFormatter(Style::currency, "ja_JP").decimalSeparator(), ".");
}

TEST(NumberFormatter, SharedFormatterFormatsFromSeveralThreads) {
    NumberFormatter shared(Style::currency, "en_US");
    std::vector<std::thread> threads;
    std::vector<int> mismatches(4, 0);
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&, t] {
            for (int i = 0; i < 200; ++i) {
                if (shared.format(1234.5 + t) != "$1,23" + std::to_string(4 + t) + ".50") ++mismatches[t];
            }
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(mismatches, std::vector<int>(4, 0));
}

TEST(Locale, SetterNormalisesAndScopeRestores) {
    const std::string before = platform::currentLocale();
    const std::string zoneBefore = platform::currentTimeZone();
    {
        platform::ScopedLocale scope("fr-FR", "Europe/Paris");
        EXPECT_EQ(platform::currentLocale(), "fr_FR");
        EXPECT_EQ(platform::currentTimeZone(), "Europe/Paris");
        EXPECT_FALSE(platform::setCurrentTimeZone("Nowhere/City"));
        EXPECT_EQ(platform::currentTimeZone(), "Europe/Paris");
    }
    EXPECT_EQ(platform::currentLocale(), before);
    EXPECT_EQ(platform::currentTimeZone(), zoneBefore);
}

TEST(LocaleDeathTest, ScopeWithUnknownZoneStops) {
    EXPECT_DEATH(platform::ScopedLocale("en_US", "Nowhere/City"), "unknown time zone \"Nowhere/City\"");
}

}  // namespace
