#pragma once
// KorvaneAPI: the process-wide settings of the vault client.
//
//   basePath               origin of every operation's URL, no trailing slash
//   customHeaders          added to every builder at construction and again at send time
//                          (a custom value wins over a builder's header of the same name)
//   credential             what `addCredential()` copies into a builder
//   requestBuilderFactory  makes the builder of every operation; a URLSessionRequestBuilderFactory
//                          by default, created on first use
//   apiResponseQueue       where completions run when the caller names no queue; the main
//                          queue as it stands on first use (platform::sharedMainQueue())
//
// Thread safety: every accessor may be called from any thread; the settings are meant to be
// set at start-up (a builder reads them when it is made and when it is executed).

#include <memory>
#include <optional>
#include <string>

#include "Korvane/Response.hpp"
#include "platform/Executor.hpp"
#include "platform/Http.hpp"

namespace korvane {

class RequestBuilderFactory;

class KorvaneAPI {
public:
    static constexpr std::string_view kDefaultBasePath = "https://api.korvane.com";

    [[nodiscard]] static std::string basePath();
    static void setBasePath(std::string basePath);

    [[nodiscard]] static HeaderMap customHeaders();
    static void setCustomHeaders(HeaderMap headers);

    [[nodiscard]] static std::optional<platform::HttpCredential> credential();
    static void setCredential(std::optional<platform::HttpCredential> credential);

    [[nodiscard]] static std::shared_ptr<RequestBuilderFactory> requestBuilderFactory();
    // nullptr goes back to the default factory.
    static void setRequestBuilderFactory(std::shared_ptr<RequestBuilderFactory> factory);

    [[nodiscard]] static std::shared_ptr<platform::Executor> apiResponseQueue();
    // nullptr forgets the queue, so that the next read captures the main queue again.
    static void setApiResponseQueue(std::shared_ptr<platform::Executor> queue);

    // Every setting back to its default, as in a fresh process.
    static void resetForTesting();
};

}  // namespace korvane
