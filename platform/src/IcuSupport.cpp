#include "IcuSupport.hpp"

#include <cmath>
#include <cstdint>

#include "platform/Text.hpp"

namespace platform::internal {

icu::UnicodeString toIcu(std::string_view utf8) {
    const std::u16string utf16 = utf8ToUtf16(utf8);
    return icu::UnicodeString(utf16.data(), static_cast<int32_t>(utf16.size()));
}

std::string toUtf8(const icu::UnicodeString& text) {
    return utf16ToUtf8(std::u16string_view(text.getBuffer(), static_cast<std::size_t>(text.length())));
}

double toUDate(std::chrono::system_clock::time_point date) {
    return std::chrono::duration<double, std::milli>(date.time_since_epoch()).count();
}

std::optional<std::chrono::system_clock::time_point> fromUDate(double udate) {
    using std::chrono::system_clock;
    // The clock's range (about the years 1678 to 2262 with nanosecond ticks) is narrower
    // than ICU's; a date outside it can't be represented.
    constexpr double limit = static_cast<double>(system_clock::duration::max().count()) /
                             (static_cast<double>(system_clock::period::den) / system_clock::period::num) * 1000.0;
    if (!std::isfinite(udate) || std::fabs(udate) >= limit) return std::nullopt;
    // Whole milliseconds convert exactly; only the fraction goes through floating point, which
    // at today's dates would otherwise lose a few hundred nanoseconds.
    const double whole = std::floor(udate);
    const auto millis = std::chrono::milliseconds(static_cast<std::int64_t>(whole));
    const auto rest =
        std::chrono::round<system_clock::duration>(std::chrono::duration<double, std::milli>(udate - whole));
    return system_clock::time_point(std::chrono::duration_cast<system_clock::duration>(millis) + rest);
}

icu::Locale makeLocale(const std::string& id) {
    icu::Locale locale(id.c_str());
    if (locale.isBogus()) return icu::Locale::getRoot();
    return locale;
}

std::unique_ptr<icu::TimeZone> makeTimeZone(std::string_view id) {
    if (id.empty()) return nullptr;
    std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(toIcu(id)));
    if (!zone) return nullptr;
    icu::UnicodeString resolved;
    zone->getID(resolved);
    // ICU answers an unknown identifier with this GMT-like zone instead of failing.
    if (resolved == icu::UnicodeString(u"Etc/Unknown")) return nullptr;
    return zone;
}

}  // namespace platform::internal
