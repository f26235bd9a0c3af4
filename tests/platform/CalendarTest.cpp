#include "platform/Calendar.hpp"
#include "platform/testing/ScopedLocale.hpp"

#include <gtest/gtest.h>

#include "platform/Locale.hpp"

namespace {

using platform::Calendar;
using platform::DateComponents;
using std::chrono::seconds;
using std::chrono::system_clock;

system_clock::time_point at(long long epochSeconds) {
    return system_clock::time_point(seconds(epochSeconds));
}

Calendar newYork() {
    return *Calendar::inTimeZone("America/New_York");
}

TEST(Calendar, ComponentsAreLocal) {
    EXPECT_EQ(newYork().components(at(1709294400)), (DateComponents{2024, 3, 1, 7, 0, 0, 0}));  // 12:00Z
    EXPECT_EQ(Calendar::inTimeZone("Asia/Tokyo")->components(at(1709294400)),
              (DateComponents{2024, 3, 1, 21, 0, 0, 0}));
}

TEST(Calendar, ComponentsBeforeTheEpochFloorTheSecond) {
    const auto utc = *Calendar::inTimeZone("UTC");
    const auto halfSecondBefore = system_clock::time_point(std::chrono::milliseconds(-500));
    EXPECT_EQ(utc.components(halfSecondBefore), (DateComponents{1969, 12, 31, 23, 59, 59, 500'000'000}));
}

TEST(Calendar, DateFromComponents) {
    struct Case {
        DateComponents components;
        long long expected;
        const char* why;
    };
    const Case cases[] = {
        {{.year = 2025, .month = 12}, 1764565200, "first of the month at local midnight"},
        {{.year = 2024, .month = 13}, 1735707600, "month 13 rolls into January"},
        {{.year = 2024, .month = 3, .day = 10, .hour = 2, .minute = 30}, 1710054000, "skipped 02:30 gives 03:00 EDT"},
        {{.year = 2024, .month = 11, .day = 3, .hour = 1, .minute = 30},
         1730611800,
         "repeated 01:30 gives the EDT one"},
    };
    for (const auto& c : cases) EXPECT_EQ(newYork().date(c.components), at(c.expected)) << c.why;
}

TEST(Calendar, EndOfFirstDayOfExpiryMonth) {
    // Start of month, plus a day less a second, then the time set to 23:59:59: the same
    // local day, never the next.
    const auto calendar = newYork();
    const auto first = calendar.date({.year = 2025, .month = 12});
    ASSERT_TRUE(first.has_value());
    const auto end = calendar.settingTime(*first + seconds(86399), 23, 59, 59);
    ASSERT_TRUE(end.has_value());
    EXPECT_EQ(*end, at(1764565200 + 86399));
    EXPECT_EQ(calendar.components(*end), (DateComponents{2025, 12, 1, 23, 59, 59, 0}));
    EXPECT_EQ(calendar.settingTime(*first + std::chrono::milliseconds(1500), 23, 59, 59), end);
}

TEST(Calendar, CurrentUsesTheCurrentZoneAndUnknownZonesFail) {
    platform::ScopedLocale scope("en_US", "Asia/Tokyo");
    EXPECT_EQ(Calendar::current().timeZone(), "Asia/Tokyo");
    EXPECT_FALSE(Calendar::inTimeZone("Nowhere/City").has_value());
}

TEST(Calendar, NanosecondsRoundTrip) {
    const auto utc = *Calendar::inTimeZone("UTC");
    const DateComponents c{2024, 2, 29, 13, 14, 15, 123'456'789};
    const auto date = utc.date(c);
    ASSERT_TRUE(date.has_value());
    EXPECT_EQ(utc.components(*date), c);
}

}  // namespace
