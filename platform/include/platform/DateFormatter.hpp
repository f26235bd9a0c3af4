#pragma once
// DateFormatter: dates to text and back with date-format patterns ("yyyy-MM-dd'T'HH:mm:ss.SSSZ",
// "MMM d • hh:mm a", "YYYY"), in a locale, a time zone and a calendar.
//
//   auto parser = platform::DateFormatter::make("yyyy-MM-dd'T'HH:mm:ss.SSSZ",
//                                                {.timeZone = "UTC"});
//   if (parser) date = parser->parse("2024-03-01T12:00:00.000Z");
//
// Pattern letters mean what they mean on the phone: "yyyy" is the calendar year and "YYYY"
// the week-based year (which depends on the locale's week rules), "Z" reads "Z", "+0200" and
// "+02:00", "ZZZZZ" writes "Z" for GMT.
//
// Parsing is strict unless `lenient` is set, like the phone's default: the whole string must
// be consumed and every field must be in range ("2024-02-30" and trailing text are refused).
// A lenient formatter accepts out-of-range fields by rolling them over.
//
// Thread safety: a formatter may be shared between threads; all members are internally
// serialised (the vault client shares one process-wide). A moved-from formatter may only be
// assigned to or destroyed.

#include <chrono>
#include <expected>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

enum class CalendarKind {
    // The locale's own calendar, as the phone does (Buddhist years for th_TH, for example).
    localeDefault,
    gregorian,
    // Gregorian with the ISO 8601 week rules: weeks start on Monday and the first week of a
    // year is the one with at least four days in it.
    iso8601,
};

struct DateFormatterOptions {
    std::optional<std::string> locale;    // absent: platform::currentLocale() at creation
    std::optional<std::string> timeZone;  // absent: platform::currentTimeZone() at creation
    CalendarKind calendar = CalendarKind::localeDefault;
    bool lenient = false;
};

struct DateFormatterError {
    enum class Code {
        invalidPattern,   // an unknown pattern letter or an unterminated quote
        unknownTimeZone,  // the time zone identifier names no zone
        unavailable,      // the platform could not make a formatter
    };
    Code code;
    std::string message;
};

class DateFormatter {
public:
    using TimePoint = std::chrono::system_clock::time_point;

    [[nodiscard]] static std::expected<DateFormatter, DateFormatterError> make(
        std::string_view pattern, const DateFormatterOptions& options = {});

    ~DateFormatter();
    DateFormatter(const DateFormatter& other);
    DateFormatter& operator=(const DateFormatter& other);
    DateFormatter(DateFormatter&& other) noexcept;
    DateFormatter& operator=(DateFormatter&& other) noexcept;

    [[nodiscard]] std::string pattern() const;
    [[nodiscard]] std::string locale() const;
    [[nodiscard]] std::string timeZone() const;

    // Answers false, and keeps the zone it had, when ICU doesn't know `timeZoneId`; callers
    // decide what to do then instead of silently getting GMT.
    [[nodiscard]] bool setTimeZone(std::string_view timeZoneId);

    [[nodiscard]] bool isLenient() const;
    void setLenient(bool lenient);

    [[nodiscard]] std::string format(TimePoint date) const;

    // Absent when `text` doesn't match the pattern as a whole, or names a date outside the
    // range of TimePoint (about the years 1678 to 2262).
    [[nodiscard]] std::optional<TimePoint> parse(std::string_view text) const;

private:
    struct Impl;
    explicit DateFormatter(std::unique_ptr<Impl> impl);
    std::unique_ptr<Impl> impl_;
};

}  // namespace platform
