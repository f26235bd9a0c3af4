#include "KorvaneElements/KvDatadogLogger.hpp"

#include <atomic>

#include "AnyCodable/JsonWriter.hpp"
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

}  // namespace

KvDatadogLogger::KvDatadogLogger(std::string clientToken, std::string logURL)
    : clientToken_(std::move(clientToken)), logURL_(std::move(logURL)) {}

void KvDatadogLogger::log(std::string_view message, std::string_view level, std::optional<std::string_view> error,
                          const anycodable::Map& attributes) {
    std::lock_guard lock(mutex_);
    for (const auto& [key, value] : attributes) attrMap_.set(key, value);
    std::string text(message);
    if (level == "error" && error) {
        text += ": ";
        text += *error;
    }
    attrMap_.set("message", std::move(text));
    attrMap_.set("level", level);
    sendLocked();
    attrMap_ = {};
}

void KvDatadogLogger::send() {
    std::lock_guard lock(mutex_);
    sendLocked();
}

void KvDatadogLogger::sendLocked() {
    if (!telemetryEnabled()) {
        return;
    }
    auto body = anycodable::toJson(attrMap_);
    if (!body) {
        return;
    }
    platform::HttpRequest request;
    request.method = "POST";
    request.url = logURL_ + clientToken_;
    request.timeout = std::chrono::milliseconds(60'000);
    request.headers.set("Content-Type", "application/json");
    request.body = std::move(*body);
    // The override is held for the duration of the call, in case a host swaps it meanwhile.
    std::shared_ptr<platform::HttpSession> installed = telemetrySession();
    platform::HttpSession& session = installed ? *installed : platform::sharedHttpSession();
    auto task = session.dataTask(std::move(request), [](const platform::HttpResult&) {});
    if (task) {
        task->resume();
    }
}

void KvDatadogLogger::setAttribute(std::string key, anycodable::Value value) {
    std::lock_guard lock(mutex_);
    attrMap_.set(std::move(key), std::move(value));
}

void KvDatadogLogger::clearAttributes() {
    std::lock_guard lock(mutex_);
    attrMap_ = {};
}

anycodable::Map KvDatadogLogger::attrMap() const {
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
