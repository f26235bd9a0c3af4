#pragma once
// Calendar: the Gregorian calendar in one time zone, for what the expiry field and the
// transaction dates need: the components of a date, the date of given components, and a date
// with its time of day replaced.
//
//   auto calendar = platform::Calendar::current();
//   auto first = calendar.date({.year = 2025, .month = 12});   // 2025-12-01 00:00 local
//   auto end = calendar.settingTime(*first, 23, 59, 59);        // 2025-12-01 23:59:59 local
//
// Thread safety: a Calendar is an immutable value; any member may be called from any thread.

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

// Fields of a local date and time. Months and days count from 1.
struct DateComponents {
    int year = 1;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;
    int nanosecond = 0;

    friend bool operator==(const DateComponents&, const DateComponents&) = default;
};

class Calendar {
public:
    using TimePoint = std::chrono::system_clock::time_point;

    // The Gregorian calendar in the current time zone (platform::currentTimeZone() now).
    [[nodiscard]] static Calendar current();

    // Absent when `timeZoneId` names no zone.
    [[nodiscard]] static std::optional<Calendar> inTimeZone(std::string_view timeZoneId);

    [[nodiscard]] const std::string& timeZone() const { return timeZone_; }

    // The local fields of `date`.
    [[nodiscard]] DateComponents components(TimePoint date) const;

    // The instant of the given local fields. Fields out of range roll over as on the phone
    // (month 13 is January of the next year). A local time that the zone skips (a daylight
    // saving gap) gives the first time after the gap; a repeated one gives its first
    // occurrence. Absent when the platform can't compute it or the instant lies outside
    // TimePoint's range.
    [[nodiscard]] std::optional<TimePoint> date(const DateComponents& components) const;

    // `date` with the local time of day replaced (sub-seconds become 0), on the same local day.
    // Skipped and repeated times are resolved as in `date`: the next valid time, the first
    // occurrence.
    [[nodiscard]] std::optional<TimePoint> settingTime(TimePoint date, int hour, int minute, int second) const;

private:
    explicit Calendar(std::string timeZone) : timeZone_(std::move(timeZone)) {}
    std::string timeZone_;
};

}  // namespace platform
