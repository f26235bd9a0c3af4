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

TEST(Calendar, ComponentsAreLocalAndRoundTrip) {
    using std::chrono::nanoseconds;
    struct Case {
        const char* zone;
        system_clock::time_point instant;
        DateComponents components;
        const char* why;
    };
    const Case cases[] = {
        {"America/New_York", at(1709294400), {2024, 3, 1, 7, 0, 0, 0}, "12:00Z, five hours behind"},
        {"Asia/Tokyo", at(1709294400), {2024, 3, 1, 21, 0, 0, 0}, "12:00Z, nine hours ahead"},
        {"UTC", at(0) - nanoseconds(500'000), {1969, 12, 31, 23, 59, 59, 999'500'000}, "before 1970 floors"},
        {"UTC", at(1709212455) + nanoseconds(123'456'789), {2024, 2, 29, 13, 14, 15, 123'456'789}, "nanoseconds"},
    };
    for (const auto& c : cases) {
        const auto calendar = *Calendar::inTimeZone(c.zone);
        EXPECT_EQ(calendar.components(c.instant), c.components) << c.why;
        EXPECT_EQ(calendar.date(c.components), c.instant) << c.why;
    }
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

}  // namespace
