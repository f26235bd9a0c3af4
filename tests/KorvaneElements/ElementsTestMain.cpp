// Telemetry of every element test goes to a recording transport, never to the network.

#include <memory>

#include "KorvaneElements/Telemetry.hpp"
#include "platform/testing/RecordingTransport.hpp"

namespace {

const bool kTelemetryStaysLocal = [] {
    auto transport = std::make_shared<platform::RecordingTransport>();
    transport->setHandler([](const platform::HttpRequest&) {
        return platform::HttpResult(platform::HttpResponse{202, {}, "", ""});
    });
    korvane::elements::setTelemetrySession(transport);
    return true;
}();

}  // namespace
