#include "platform/DateFormatter.hpp"
#include "platform/testing/ScopedLocale.hpp"

#include <gtest/gtest.h>

#include "platform/Locale.hpp"

namespace {

using platform::CalendarKind;
using platform::DateFormatter;
using platform::DateFormatterError;
using platform::DateFormatterOptions;
using std::chrono::seconds;
using std::chrono::system_clock;

system_clock::time_point at(long long epochSeconds) {
    return system_clock::time_point(seconds(epochSeconds));
}

constexpr long long kMarch1Noon2024 = 1709294400;  // 2024-03-01T12:00:00Z

DateFormatter make(std::string_view pattern, const DateFormatterOptions& options) {
    auto formatter = DateFormatter::make(pattern, options);
    EXPECT_TRUE(formatter.has_value()) << pattern << ": " << (formatter ? "" : formatter.error().message);
    return *std::move(formatter);
}

TEST(DateFormatter, TimestampOffsetsGiveTheSameInstant) {
    const auto parser = make("yyyy-MM-dd'T'HH:mm:ss.SSSZ", {.locale = "en_US", .timeZone = "UTC"});
    for (const char* text : {"2024-03-01T12:00:00.000Z", "2024-03-01T14:00:00.000+0200",
                             "2024-03-01T14:00:00.000+02:00", "2024-03-01T07:00:00.000-0500"}) {
        EXPECT_EQ(parser.parse(text), at(kMarch1Noon2024)) << text;
    }
    EXPECT_EQ(parser.parse("2024-03-01T12:00:00.250Z"), at(kMarch1Noon2024) + std::chrono::milliseconds(250));
}

TEST(DateFormatter, StrictParsingRefusesWhatThePhoneRefusesAndDatesOutsideTheClock) {
    const auto timestamp = make("yyyy-MM-dd'T'HH:mm:ss.SSSZ", {.locale = "en_US", .timeZone = "UTC"});
    const auto day = make("yyyy-MM-dd", {.locale = "en_US", .timeZone = "UTC"});
    struct Case {
        const DateFormatter& formatter;
        const char* text;
        const char* why;
    };
    const Case rejected[] = {
        {timestamp, "2024-03-01T12:00:00Z", "no fractional seconds"},
        {timestamp, "2024-03-01T12:00:00.000Z junk", "trailing text"},
        {timestamp, "", "empty"},
        {timestamp, "2024-03-01T12:00:00.1234567890Z", "ten fraction digits overflow ICU's scaling"},
        {timestamp, "2024-03-01T12:00:00.\uFF10\uFF10\uFF10\uFF10\uFF10\uFF10\uFF10\uFF10\uFF10\uFF10Z",
         "fullwidth digits count too"},
        {timestamp, "2024-03-01T12:00:00.00000000000000000000000000000000001Z", "35 digits: ICU divides by zero"},
        {day, "2024-02-30", "no such day"},
        {day, "2024-13-01", "no such month"},
        {day, "2024-02-29x", "trailing letter"},
        {day, "2024/02/29", "wrong separators"},
        {day, "3000-01-01", "after the clock's range"},
        {day, "1500-01-01", "before the clock's range"},
    };
    for (const auto& c : rejected) EXPECT_EQ(c.formatter.parse(c.text), std::nullopt) << c.text << ": " << c.why;
    EXPECT_EQ(day.parse("2024-02-29"), at(1709164800));
    EXPECT_EQ(timestamp.parse("2024-03-01T12:00:00.250999999Z"), at(kMarch1Noon2024) + std::chrono::milliseconds(250))
        << "nine digits are nanoseconds, read to the millisecond";
}

TEST(DateFormatter, LenientParsingRollsOver) {
    auto day = make("yyyy-MM-dd", {.locale = "en_US", .timeZone = "UTC", .lenient = true});
    EXPECT_TRUE(day.isLenient());
    EXPECT_EQ(day.parse("2024-02-30"), at(1709251200));  // 2024-03-01
    day.setLenient(false);
    EXPECT_EQ(day.parse("2024-02-30"), std::nullopt);
}

TEST(DateFormatter, WeekBasedYearFollowsTheCalendarsWeekRules) {
    const auto lastDay2026 = at(1798718400);  // 2026-12-31T12:00:00Z, a Thursday
    struct Case {
        const char* locale;
        CalendarKind calendar;
        const char* pattern;
        const char* expected;
    };
    const Case cases[] = {
        {"en_US", CalendarKind::localeDefault, "YYYY", "2027"},  // weeks from Sunday, one day is enough
        {"de_DE", CalendarKind::localeDefault, "YYYY", "2026"},  // ISO-like week rules
        {"en_US_POSIX", CalendarKind::iso8601, "YYYY", "2026"},
        {"en_US_POSIX", CalendarKind::gregorian, "YYYY", "2027"},
        {"en_US", CalendarKind::localeDefault, "yyyy", "2026"},
    };
    for (const auto& c : cases) {
        const auto formatter = make(c.pattern, {.locale = c.locale, .timeZone = "UTC", .calendar = c.calendar});
        EXPECT_EQ(formatter.format(lastDay2026), c.expected) << c.locale << " " << c.pattern;
    }
}

TEST(DateFormatter, IsoWriterEndsInZWhateverOffsetWasRead) {
    const DateFormatterOptions iso{.locale = "en_US_POSIX", .timeZone = "GMT", .calendar = CalendarKind::iso8601};
    const auto writer = make("yyyy-MM-dd'T'HH:mm:ss.SSSZZZZZ", iso);
    const auto noFraction = make("yyyy-MM-dd'T'HH:mm:ssZZZZZ", iso);
    const auto read = noFraction.parse("2024-03-01T14:00:00+02:00");
    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(writer.format(*read), "2024-03-01T12:00:00.000Z");
}

TEST(DateFormatter, DefaultsComeFromTheCurrentSettings) {
    platform::ScopedLocale scope("de_DE", "Asia/Tokyo");
    const auto formatter = DateFormatter::make("HH:mm MMMM");
    ASSERT_TRUE(formatter.has_value());
    EXPECT_EQ(formatter->locale(), "de_DE");
    EXPECT_EQ(formatter->timeZone(), "Asia/Tokyo");
    EXPECT_EQ(formatter->format(at(kMarch1Noon2024)), "21:00 März");
}

TEST(DateFormatter, UnknownTimeZoneIsReportedNotReplacedByGmt) {
    const auto failed = DateFormatter::make("HH:mm", {.locale = "en_US", .timeZone = "Nowhere/City"});
    ASSERT_FALSE(failed.has_value());
    EXPECT_EQ(failed.error().code, DateFormatterError::Code::unknownTimeZone);

    auto formatter = make("HH:mm", {.locale = "en_US", .timeZone = "Asia/Tokyo"});
    EXPECT_FALSE(formatter.setTimeZone("Nowhere/City"));
    EXPECT_EQ(formatter.timeZone(), "Asia/Tokyo");
    EXPECT_EQ(formatter.format(at(kMarch1Noon2024)), "21:00");
    EXPECT_TRUE(formatter.setTimeZone("UTC"));
    EXPECT_EQ(formatter.format(at(kMarch1Noon2024)), "12:00");
}

TEST(DateFormatter, BadPatternsAreErrorValues) {
    for (const char* pattern : {"yyyy-jj", "'unterminated", "HH:mm 'o'clock"}) {
        const auto made = DateFormatter::make(pattern, {.locale = "en_US", .timeZone = "UTC"});
        ASSERT_FALSE(made.has_value()) << pattern;
        EXPECT_EQ(made.error().code, DateFormatterError::Code::invalidPattern) << pattern;
    }
    // Doubled quotes are a literal quote, inside and outside quoted text.
    const auto quoted = make("h 'o''clock' ''", {.locale = "en_US", .timeZone = "UTC"});
    EXPECT_EQ(quoted.format(at(kMarch1Noon2024)), "12 o'clock '");
}

TEST(DateFormatter, CopiesAreIndependent) {
    auto original = make("HH:mm", {.locale = "en_US", .timeZone = "UTC"});
    DateFormatter copy = original;
    ASSERT_TRUE(copy.setTimeZone("Asia/Tokyo"));
    EXPECT_EQ(original.format(at(kMarch1Noon2024)), "12:00");
    EXPECT_EQ(copy.format(at(kMarch1Noon2024)), "21:00");
    EXPECT_EQ(copy.pattern(), "HH:mm");
}

}  // namespace
