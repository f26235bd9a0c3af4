#include "platform/testing/ScopedLocale.hpp"

#include "platform/Fatal.hpp"
#include "platform/Locale.hpp"

namespace platform {

ScopedLocale::ScopedLocale(std::string_view localeId, std::string_view timeZoneId)
    : previousLocale_(currentLocale()), previousTimeZone_(currentTimeZone()) {
    if (!setCurrentTimeZone(timeZoneId)) {
        platform::fatalStop("ScopedLocale: unknown time zone \"" + std::string(timeZoneId) + "\"");
    }
    setCurrentLocale(localeId);
}

ScopedLocale::~ScopedLocale() {
    setCurrentLocale(previousLocale_);
    (void)setCurrentTimeZone(previousTimeZone_);
}

}  // namespace platform
