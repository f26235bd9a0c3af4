#pragma once
// Conversions between the public types of the platform layer (UTF-8 strings, UTF-16 views,
// system_clock time points) and ICU's. Private to platform/src: nothing ICU leaks out.

#include <unicode/locid.h>
#include <unicode/timezone.h>
#include <unicode/unistr.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace platform::internal {

// ICU's UChar is char16_t since ICU 59, so views convert without copying.
[[nodiscard]] inline icu::UnicodeString toIcu(std::u16string_view text) {
    return icu::UnicodeString(text.data(), static_cast<int32_t>(text.size()));
}

// Invalid UTF-8 becomes U+FFFD, as everywhere in the platform layer.
[[nodiscard]] icu::UnicodeString toIcu(std::string_view utf8);

[[nodiscard]] std::string toUtf8(const icu::UnicodeString& text);

[[nodiscard]] inline std::u16string toU16(const icu::UnicodeString& text) {
    return std::u16string(text.getBuffer(), static_cast<std::size_t>(text.length()));
}

// ICU dates are milliseconds since the epoch as a double; the fraction keeps sub-millisecond
// precision as far as a double can.
[[nodiscard]] double toUDate(std::chrono::system_clock::time_point date);
// Absent for a date that the clock type can't hold.
[[nodiscard]] std::optional<std::chrono::system_clock::time_point> fromUDate(double udate);

// The locale for an identifier such as "en_US" or "de-DE". An identifier ICU can't read gives
// the root locale, so a formatter made from it still works.
[[nodiscard]] icu::Locale makeLocale(const std::string& id);

// The zone for an identifier, or nullptr when ICU doesn't know it (ICU itself would answer a
// GMT-like "unknown" zone, which would silently shift every date).
[[nodiscard]] std::unique_ptr<icu::TimeZone> makeTimeZone(std::string_view id);

}  // namespace platform::internal
