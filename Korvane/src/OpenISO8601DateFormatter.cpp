#include "Korvane/OpenISO8601DateFormatter.hpp"

#include <chrono>
#include <mutex>

#include "platform/DateFormatter.hpp"

namespace korvane {
namespace {

const platform::DateFormatterOptions kOptions{
    .locale = "en_US_POSIX", .timeZone = "GMT", .calendar = platform::CalendarKind::iso8601, .lenient = false};

std::optional<platform::DateFormatter> makeFormatter(std::string_view pattern) {
    auto made = platform::DateFormatter::make(pattern, kOptions);
    if (!made) return std::nullopt;
    return std::move(*made);
}

// The fallbacks of the read, shared by every instance and built on first need.
const std::optional<platform::DateFormatter>& withoutFractionalSeconds() {
    static const auto formatter = makeFormatter("yyyy-MM-dd'T'HH:mm:ssZZZZZ");
    return formatter;
}

const std::optional<platform::DateFormatter>& dateOnly() {
    static const auto formatter = makeFormatter("yyyy-MM-dd");
    return formatter;
}

// The formats carry at most milliseconds; rounding to them drops the error of the platform's
// floating-point time base, so that a date read back equals the date written.
std::optional<anycodable::Date> toMilliseconds(std::optional<anycodable::Date> date) {
    if (!date) return std::nullopt;
    return anycodable::Date(std::chrono::round<std::chrono::milliseconds>(date->time_since_epoch()));
}

// Reads the two shapes that servers send almost always, "2024-01-15T12:00:00.123Z" and
// "2024-01-15T12:00:00+02:00" (milliseconds optional, "Z" or a "+hh:mm"/"-hh:mm" offset),
// without the ICU round trip that otherwise dominates decoding a page of tokens. It answers
// only for text that the first two steps of the read accept with the same result (fixed
// widths, a real calendar day, years 1900 to 2199); anything else is left to those steps.
std::optional<anycodable::Date> readCanonical(std::string_view text) {
    auto digits = [&](std::size_t at, std::size_t count, int& out) {
        if (at + count > text.size()) return false;
        out = 0;
        for (std::size_t i = at; i < at + count; ++i) {
            if (text[i] < '0' || text[i] > '9') return false;
            out = out * 10 + (text[i] - '0');
        }
        return true;
    };
    auto is = [&](std::size_t at, char c) { return at < text.size() && text[at] == c; };
    int year, month, day, hour, minute, second, millis = 0;
    if (!digits(0, 4, year) || !is(4, '-') || !digits(5, 2, month) || !is(7, '-') || !digits(8, 2, day) ||
        !is(10, 'T') || !digits(11, 2, hour) || !is(13, ':') || !digits(14, 2, minute) || !is(16, ':') ||
        !digits(17, 2, second)) {
        return std::nullopt;
    }
    std::size_t at = 19;
    if (is(at, '.')) {
        if (!digits(at + 1, 3, millis)) return std::nullopt;
        at += 4;
    }
    int offsetMinutes = 0;
    if (is(at, 'Z') && at + 1 == text.size()) {
    } else if ((is(at, '+') || is(at, '-')) && at + 6 == text.size() && is(at + 3, ':')) {
        int offsetHours, offsetMins;
        if (!digits(at + 1, 2, offsetHours) || !digits(at + 4, 2, offsetMins) || offsetHours > 18 || offsetMins > 59) {
            return std::nullopt;
        }
        offsetMinutes = (text[at] == '-' ? -1 : 1) * (offsetHours * 60 + offsetMins);
    } else {
        return std::nullopt;
    }
    if (year < 1900 || year > 2199 || hour > 23 || minute > 59 || second > 59) return std::nullopt;
    const std::chrono::year_month_day ymd{std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                                          std::chrono::day(static_cast<unsigned>(day))};
    if (!ymd.ok()) return std::nullopt;
    return anycodable::Date(std::chrono::sys_days(ymd).time_since_epoch() + std::chrono::hours(hour) +
                            std::chrono::minutes(minute - offsetMinutes) + std::chrono::seconds(second) +
                            std::chrono::milliseconds(millis));
}

}  // namespace

struct OpenISO8601DateFormatter::Impl {
    mutable std::mutex mutex;
    std::optional<platform::DateFormatter> formatter = makeFormatter(kDefaultDateFormat);
    // The shortcut stands for the first two steps only while the first uses its own pattern.
    bool defaultPattern = true;
};

OpenISO8601DateFormatter::OpenISO8601DateFormatter() : impl_(std::make_unique<Impl>()) {}
OpenISO8601DateFormatter::~OpenISO8601DateFormatter() = default;

std::string OpenISO8601DateFormatter::dateFormat() const {
    std::lock_guard lock(impl_->mutex);
    return impl_->formatter ? impl_->formatter->pattern() : std::string(kDefaultDateFormat);
}

bool OpenISO8601DateFormatter::setDateFormat(std::string_view pattern) {
    auto made = makeFormatter(pattern);
    if (!made) return false;
    std::lock_guard lock(impl_->mutex);
    impl_->formatter = std::move(made);
    impl_->defaultPattern = pattern == kDefaultDateFormat;
    return true;
}

std::string OpenISO8601DateFormatter::string(anycodable::Date date) const {
    std::lock_guard lock(impl_->mutex);
    return impl_->formatter ? impl_->formatter->format(date) : std::string();
}

std::optional<anycodable::Date> OpenISO8601DateFormatter::date(std::string_view text) const {
    {
        std::lock_guard lock(impl_->mutex);
        if (impl_->defaultPattern && impl_->formatter) {
            if (auto canonical = readCanonical(text)) return canonical;
        }
        if (impl_->formatter) {
            if (auto parsed = impl_->formatter->parse(text)) return toMilliseconds(parsed);
        }
    }
    if (const auto& second = withoutFractionalSeconds()) {
        if (auto parsed = second->parse(text)) return toMilliseconds(parsed);
    }
    if (const auto& third = dateOnly()) return toMilliseconds(third->parse(text));
    return std::nullopt;
}

}  // namespace korvane
