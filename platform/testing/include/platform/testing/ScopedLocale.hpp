#pragma once
// ScopedLocale: a current locale and time zone for the length of a scope.

#include <string>
#include <string_view>

namespace platform {

// Sets the current locale and time zone for its lifetime and restores the previous pair after.
// Meant for tests:
//   platform::ScopedLocale scope("en_US", "America/New_York");
// REQUIRES: `timeZoneId` is a known zone (an unknown one stops the process, since a test
// would otherwise run in the wrong zone without noticing). Scopes must nest.
class ScopedLocale {
public:
    ScopedLocale(std::string_view localeId, std::string_view timeZoneId);
    ~ScopedLocale();
    ScopedLocale(const ScopedLocale&) = delete;
    ScopedLocale& operator=(const ScopedLocale&) = delete;

private:
    std::string previousLocale_;
    std::string previousTimeZone_;
};

}  // namespace platform
