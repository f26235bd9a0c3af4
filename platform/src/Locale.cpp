#include "platform/Locale.hpp"

#include <unicode/locid.h>
#include <unicode/timezone.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <mutex>

#include "IcuSupport.hpp"

namespace platform {

namespace {

struct Settings {
    std::mutex mutex;
    std::string locale;
    std::string timeZone;
};

std::string hostTimeZone() {
    std::unique_ptr<icu::TimeZone> host(icu::TimeZone::detectHostTimeZone());
    if (host) {
        icu::UnicodeString id;
        host->getID(id);
        std::string utf8 = internal::toUtf8(id);
        if (isKnownTimeZone(utf8)) return utf8;
    }
    // The phone falls back to GMT when it can't tell its zone.
    return "GMT";
}

Settings& settings() {
    static Settings* instance = [] {
        auto* made = new Settings;
        made->locale = icu::Locale::getDefault().getName();
        made->timeZone = hostTimeZone();
        return made;
    }();
    return *instance;
}

}  // namespace

std::string currentLocale() {
    Settings& s = settings();
    std::lock_guard lock(s.mutex);
    return s.locale;
}

void setCurrentLocale(std::string_view localeId) {
    std::string id(localeId);
    icu::Locale parsed(id.c_str());
    if (!parsed.isBogus() && !id.empty()) id = parsed.getName();
    Settings& s = settings();
    std::lock_guard lock(s.mutex);
    s.locale = std::move(id);
}

std::string currentTimeZone() {
    Settings& s = settings();
    std::lock_guard lock(s.mutex);
    return s.timeZone;
}

bool setCurrentTimeZone(std::string_view timeZoneId) {
    if (!isKnownTimeZone(timeZoneId)) return false;
    Settings& s = settings();
    std::lock_guard lock(s.mutex);
    s.timeZone = std::string(timeZoneId);
    return true;
}

bool isKnownTimeZone(std::string_view timeZoneId) {
    return internal::makeTimeZone(timeZoneId) != nullptr;
}

}  // namespace platform
