#include "Korvane/OpenISO8601DateFormatter.hpp"

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

}  // namespace

struct OpenISO8601DateFormatter::Impl {
    mutable std::mutex mutex;
    std::optional<platform::DateFormatter> formatter = makeFormatter(kDefaultDateFormat);
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
    return true;
}

std::string OpenISO8601DateFormatter::string(anycodable::Date date) const {
    std::lock_guard lock(impl_->mutex);
    return impl_->formatter ? impl_->formatter->format(date) : std::string();
}

std::optional<anycodable::Date> OpenISO8601DateFormatter::date(std::string_view text) const {
    {
        std::lock_guard lock(impl_->mutex);
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
