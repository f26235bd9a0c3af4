// Telemetry of every element test goes to a recording transport, never to the network.

#include <gtest/gtest.h>

#include <memory>

#include "KorvaneElements/KvDatadogLogger.hpp"
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

// The shared logger's first message carries the build attributes; spending them before any test
// makes every posted body the same whichever test happens to run first.
struct SharedLoggerBuilt : ::testing::Environment {
    void SetUp() override { korvane::elements::logger().clearAttributes(); }
};
const auto* const kSharedLoggerBuilt = ::testing::AddGlobalTestEnvironment(new SharedLoggerBuilt);

}  // namespace
