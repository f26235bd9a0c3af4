#include "KorvaneElements/Telemetry.hpp"

#include <mutex>

#include "KorvaneElements/KvDatadogLogger.hpp"
#include "SharedLogger.hpp"
#include "platform/HttpSession.hpp"

namespace korvane::elements {

namespace {
struct Settings {
    std::mutex mutex;
    bool enabled = true;
    std::string origin = kDefaultTelemetryIntakeOrigin;
    std::shared_ptr<platform::HttpSession> session;
};

Settings& settings() {
    static Settings instance;
    return instance;
}
}  // namespace

void setTelemetryEnabled(bool enabled) {
    std::lock_guard lock(settings().mutex);
    settings().enabled = enabled;
}

bool telemetryEnabled() {
    std::lock_guard lock(settings().mutex);
    return settings().enabled;
}

void setTelemetryIntakeOrigin(std::string origin) {
    while (!origin.empty() && origin.back() == '/') {
        origin.pop_back();
    }
    {
        std::lock_guard lock(settings().mutex);
        settings().origin = origin;
    }
    // A logger built before the host got to set the origin follows it from the next message.
    if (KvDatadogLogger* shared = internal::sharedLoggerIfBuilt()) {
        shared->setLogURL(origin + kTelemetryIntakePath);
    }
}

std::string telemetryIntakeOrigin() {
    std::lock_guard lock(settings().mutex);
    return settings().origin;
}

void setTelemetrySession(std::shared_ptr<platform::HttpSession> session) {
    std::lock_guard lock(settings().mutex);
    settings().session = std::move(session);
}

std::shared_ptr<platform::HttpSession> telemetrySession() {
    std::lock_guard lock(settings().mutex);
    return settings().session;
}

}  // namespace korvane::elements
