#include "KorvaneElements/KvDatadogLogger.hpp"

#include <atomic>
#include <cmath>

#include "KorvaneElements/Telemetry.hpp"
#include "SharedLogger.hpp"
#include "platform/DeviceInfo.hpp"
#include "platform/Fatal.hpp"
#include "platform/Http.hpp"
#include "platform/HttpSession.hpp"

namespace korvane::elements {

namespace {

constexpr const char* kClientToken = "pub5c1f09ae77d24b6083e1fa2b6c9d04ee";
constexpr const char* kServiceName = "Korvane iOS Elements";
constexpr const char* kElementsVersion = "4.1.1";

// What the phone's JSON writer refuses: non-finite numbers. Text that is not UTF-8 is caught
// by the strict dump below.
bool representable(const nlohmann::ordered_json& value) {
    if (value.is_number_float()) {
        return std::isfinite(value.get<double>());
    }
    if (value.is_structured()) {
        for (const auto& item : value) {
            if (!representable(item)) {
                return false;
            }
        }
    }
    return true;
}

}  // namespace

KvDatadogLogger::KvDatadogLogger(std::string clientToken, std::string logURL)
    : clientToken_(std::move(clientToken)), logURL_(std::move(logURL)) {}

void KvDatadogLogger::log(std::string_view message, std::string_view level, std::optional<std::string_view> error,
                          const std::optional<nlohmann::ordered_json>& attributes) {
    std::lock_guard lock(mutex_);
    if (attributes && attributes->is_object()) {
        for (const auto& [key, value] : attributes->items()) {
            attrMap_[key] = value;
        }
    }
    std::string text(message);
    if (level == "error" && error) {
        text += ": ";
        text += *error;
    }
    attrMap_["message"] = std::move(text);
    attrMap_["level"] = std::string(level);
    sendLocked();
    attrMap_ = nlohmann::ordered_json::object();
}

void KvDatadogLogger::send() {
    std::lock_guard lock(mutex_);
    sendLocked();
}

void KvDatadogLogger::sendLocked() {
    if (!telemetryEnabled()) {
        return;
    }
    if (!representable(attrMap_)) {
        return;
    }
    std::string body;
    try {
        body = attrMap_.dump();
    } catch (const nlohmann::json::exception&) {
        return;
    }
    platform::HttpRequest request;
    request.method = "POST";
    request.url = logURL_ + clientToken_;
    request.timeout = std::chrono::milliseconds(60'000);
    request.headers.set("Content-Type", "application/json");
    request.body = std::move(body);
    // The override is held for the duration of the call, in case a host swaps it meanwhile.
    std::shared_ptr<platform::HttpSession> installed = telemetrySession();
    platform::HttpSession& session = installed ? *installed : platform::sharedHttpSession();
    auto task = session.dataTask(std::move(request), [](const platform::HttpResult&) {});
    if (task) {
        task->resume();
    }
}

void KvDatadogLogger::setAttribute(const std::string& key, nlohmann::ordered_json value) {
    std::lock_guard lock(mutex_);
    attrMap_[key] = std::move(value);
}

void KvDatadogLogger::clearAttributes() {
    std::lock_guard lock(mutex_);
    attrMap_ = nlohmann::ordered_json::object();
}

nlohmann::ordered_json KvDatadogLogger::attrMap() const {
    std::lock_guard lock(mutex_);
    return attrMap_;
}

std::string KvDatadogLogger::logURL() const {
    std::lock_guard lock(mutex_);
    return logURL_;
}

void KvDatadogLogger::setLogURL(std::string url) {
    std::lock_guard lock(mutex_);
    logURL_ = std::move(url);
}

KVDatadogLoggerBuilder& KVDatadogLoggerBuilder::setClientToken(std::optional<std::string> token) {
    clientToken_ = std::move(token);
    return *this;
}

KVDatadogLoggerBuilder& KVDatadogLoggerBuilder::addAttribute(std::string key, std::string value) {
    attributes_[std::move(key)] = std::move(value);
    return *this;
}

std::unique_ptr<KvDatadogLogger> KVDatadogLoggerBuilder::build() {
    if (!clientToken_) {
        platform::fatalStop("KVDatadogLoggerBuilder: a client token is required to build a logger");
    }
    auto logger = std::make_unique<KvDatadogLogger>(*clientToken_, telemetryIntakeOrigin() + kTelemetryIntakePath);
    for (auto& [key, value] : attributes_) {
        logger->setAttribute(key, value);
    }
    attributes_.clear();
    return logger;
}

KVDatadogLoggerBuilder makeDefaultLoggerBuilder() {
    const platform::DeviceInfo info = platform::deviceInfo();
    const bool integration =
        info.bundleIdentifier && info.bundleIdentifier->find("IntegrationTester") != std::string::npos;
    KVDatadogLoggerBuilder builder;
    builder.setClientToken(kClientToken)
        .addAttribute("env", integration ? "local" : "prod")
        .addAttribute("application", kServiceName)
        .addAttribute("service", kServiceName)
        .addAttribute("vendorId", info.vendorIdentifier.value_or("Unknown vendorId"))
        .addAttribute("bundleId", info.bundleIdentifier.value_or("Unknown vendor"))
        .addAttribute("bundleVersion", info.shortVersion.value_or("Unknown vendor version"))
        .addAttribute("bundleBuildVersion", info.buildVersion.value_or("Unknown vendor build version"))
        .addAttribute("device", info.deviceName)
        .addAttribute("kvElementsVersion", kElementsVersion);
    return builder;
}

namespace {
std::atomic<KvDatadogLogger*> gSharedLogger{nullptr};
}  // namespace

KvDatadogLogger& logger() {
    // Built once and never destroyed, so that logging from static destructors stays safe.
    static KvDatadogLogger* shared = [] {
        KvDatadogLogger* built = makeDefaultLoggerBuilder().build().release();
        gSharedLogger.store(built, std::memory_order_release);
        return built;
    }();
    return *shared;
}

KvDatadogLogger* internal::sharedLoggerIfBuilt() {
    return gSharedLogger.load(std::memory_order_acquire);
}

}  // namespace korvane::elements
