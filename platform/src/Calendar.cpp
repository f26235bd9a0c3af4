#include "platform/Calendar.hpp"

#include <unicode/gregocal.h>

#include <memory>

#include "IcuSupport.hpp"
#include "platform/Locale.hpp"

namespace platform {

namespace {

// A fresh ICU calendar per call keeps Calendar immutable and thread-safe; making one costs a
// few microseconds, far below anything that calls it.
std::unique_ptr<icu::GregorianCalendar> makeIcuCalendar(const std::string& timeZone) {
    std::unique_ptr<icu::TimeZone> zone = internal::makeTimeZone(timeZone);
    if (!zone) return nullptr;
    UErrorCode status = U_ZERO_ERROR;
    auto calendar = std::make_unique<icu::GregorianCalendar>(zone.release(), icu::Locale::getRoot(), status);
    if (U_FAILURE(status)) return nullptr;
    calendar->setLenient(true);
    calendar->setSkippedWallTimeOption(UCAL_WALLTIME_NEXT_VALID);
    calendar->setRepeatedWallTimeOption(UCAL_WALLTIME_FIRST);
    return calendar;
}

std::optional<Calendar::TimePoint> timeOf(icu::Calendar& calendar) {
    UErrorCode status = U_ZERO_ERROR;
    const UDate udate = calendar.getTime(status);
    if (U_FAILURE(status)) return std::nullopt;
    return internal::fromUDate(udate);
}

}  // namespace

Calendar Calendar::current() {
    return Calendar(currentTimeZone());
}

std::optional<Calendar> Calendar::inTimeZone(std::string_view timeZoneId) {
    if (!isKnownTimeZone(timeZoneId)) return std::nullopt;
    return Calendar(std::string(timeZoneId));
}

DateComponents Calendar::components(TimePoint date) const {
    DateComponents out;
    auto calendar = makeIcuCalendar(timeZone_);
    if (!calendar) return out;
    // Whole milliseconds go to ICU; the rest is added back as nanoseconds.
    const auto sinceEpoch = date.time_since_epoch();
    const auto millis = std::chrono::floor<std::chrono::milliseconds>(sinceEpoch);
    UErrorCode status = U_ZERO_ERROR;
    calendar->setTime(static_cast<UDate>(millis.count()), status);
    auto field = [&](UCalendarDateFields which) { return calendar->get(which, status); };
    // Before year 1 the era flips and YEAR counts backwards; EXTENDED_YEAR stays continuous.
    out.year = field(UCAL_EXTENDED_YEAR);
    out.month = field(UCAL_MONTH) + 1;
    out.day = field(UCAL_DATE);
    out.hour = field(UCAL_HOUR_OF_DAY);
    out.minute = field(UCAL_MINUTE);
    out.second = field(UCAL_SECOND);
    const auto subSecond = sinceEpoch - std::chrono::floor<std::chrono::seconds>(sinceEpoch);
    out.nanosecond = static_cast<int>(std::chrono::duration_cast<std::chrono::nanoseconds>(subSecond).count());
    if (U_FAILURE(status)) return DateComponents{};
    return out;
}

std::optional<Calendar::TimePoint> Calendar::date(const DateComponents& c) const {
    auto calendar = makeIcuCalendar(timeZone_);
    if (!calendar) return std::nullopt;
    calendar->clear();
    calendar->set(UCAL_EXTENDED_YEAR, c.year);
    calendar->set(UCAL_MONTH, c.month - 1);
    calendar->set(UCAL_DATE, c.day);
    calendar->set(UCAL_HOUR_OF_DAY, c.hour);
    calendar->set(UCAL_MINUTE, c.minute);
    calendar->set(UCAL_SECOND, c.second);
    auto base = timeOf(*calendar);
    if (!base) return std::nullopt;
    return *base + std::chrono::duration_cast<TimePoint::duration>(std::chrono::nanoseconds(c.nanosecond));
}

std::optional<Calendar::TimePoint> Calendar::settingTime(TimePoint date, int hour, int minute, int second) const {
    auto calendar = makeIcuCalendar(timeZone_);
    if (!calendar) return std::nullopt;
    const auto millis = std::chrono::floor<std::chrono::milliseconds>(date.time_since_epoch());
    UErrorCode status = U_ZERO_ERROR;
    calendar->setTime(static_cast<UDate>(millis.count()), status);
    if (U_FAILURE(status)) return std::nullopt;
    calendar->set(UCAL_HOUR_OF_DAY, hour);
    calendar->set(UCAL_MINUTE, minute);
    calendar->set(UCAL_SECOND, second);
    calendar->set(UCAL_MILLISECOND, 0);
    return timeOf(*calendar);
}

}  // namespace platform
