#pragma once
// The device's current locale and time zone.
//
// Formatters and calendars made without an explicit locale or zone take these at creation,
// the way the phone's formatters take the device settings. The values start from the
// process environment (ICU's default locale and the host's zone) and can be replaced, for
// example by a host that mirrors the phone's settings or by a test.
//
// Thread safety: every function here may be called from any thread. A formatter that already
// exists keeps the locale and zone it was made with.

#include <string>
#include <string_view>

namespace platform {

// The current locale identifier, such as "en_US" or "de_DE".
[[nodiscard]] std::string currentLocale();

// Replaces the current locale. Separators are normalised ("de-DE" is stored as "de_DE");
// an identifier that can't be read is kept as given, and formatters then use the root locale.
void setCurrentLocale(std::string_view localeId);

// The current time zone identifier, such as "America/New_York".
[[nodiscard]] std::string currentTimeZone();

// Replaces the current time zone. Answers false, and changes nothing, for an identifier that
// isn't a known zone.
[[nodiscard]] bool setCurrentTimeZone(std::string_view timeZoneId);

// Whether `timeZoneId` names a zone: an Olson identifier ("Europe/Berlin"), "UTC", "GMT" or a
// custom offset such as "GMT+02:00".
[[nodiscard]] bool isKnownTimeZone(std::string_view timeZoneId);

}  // namespace platform
