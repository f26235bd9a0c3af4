#include "Korvane/KorvaneAPI.hpp"

#include <mutex>

#include "Korvane/RequestBuilderFactory.hpp"
#include "platform/MainQueue.hpp"

namespace korvane {
namespace {

// The settings are meant for start-up, but builders read them from any thread; one lock keeps
// those reads well defined.
struct Settings {
    std::mutex mutex;
    std::string basePath{KorvaneAPI::kDefaultBasePath};
    HeaderMap customHeaders;
    std::optional<platform::HttpCredential> credential;
    std::shared_ptr<RequestBuilderFactory> factory;
    std::shared_ptr<platform::Executor> apiResponseQueue;
};

Settings& settings() {
    static Settings* const instance = new Settings();  // outlives static destruction
    return *instance;
}

}  // namespace

std::string KorvaneAPI::basePath() {
    std::lock_guard lock(settings().mutex);
    return settings().basePath;
}

void KorvaneAPI::setBasePath(std::string basePath) {
    std::lock_guard lock(settings().mutex);
    settings().basePath = std::move(basePath);
}

HeaderMap KorvaneAPI::customHeaders() {
    std::lock_guard lock(settings().mutex);
    return settings().customHeaders;
}

void KorvaneAPI::setCustomHeaders(HeaderMap headers) {
    std::lock_guard lock(settings().mutex);
    settings().customHeaders = std::move(headers);
}

std::optional<platform::HttpCredential> KorvaneAPI::credential() {
    std::lock_guard lock(settings().mutex);
    return settings().credential;
}

void KorvaneAPI::setCredential(std::optional<platform::HttpCredential> credential) {
    std::lock_guard lock(settings().mutex);
    settings().credential = std::move(credential);
}

std::shared_ptr<RequestBuilderFactory> KorvaneAPI::requestBuilderFactory() {
    std::lock_guard lock(settings().mutex);
    if (!settings().factory) settings().factory = std::make_shared<URLSessionRequestBuilderFactory>();
    return settings().factory;
}

void KorvaneAPI::setRequestBuilderFactory(std::shared_ptr<RequestBuilderFactory> factory) {
    std::lock_guard lock(settings().mutex);
    settings().factory = std::move(factory);
}

std::shared_ptr<platform::Executor> KorvaneAPI::apiResponseQueue() {
    std::lock_guard lock(settings().mutex);
    if (!settings().apiResponseQueue) settings().apiResponseQueue = platform::sharedMainQueue();
    return settings().apiResponseQueue;
}

void KorvaneAPI::setApiResponseQueue(std::shared_ptr<platform::Executor> queue) {
    std::lock_guard lock(settings().mutex);
    settings().apiResponseQueue = std::move(queue);
}

void KorvaneAPI::resetForTesting() {
    std::lock_guard lock(settings().mutex);
    settings().basePath = std::string(kDefaultBasePath);
    settings().customHeaders.clear();
    settings().credential.reset();
    settings().factory.reset();
    settings().apiResponseQueue.reset();
}

}  // namespace korvane
