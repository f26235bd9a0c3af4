#pragma once
// Telemetry settings: where the element library's log lines go, and whether they go at all.
//
// By default every line is posted to the public log intake. A host that wants no telemetry at
// all calls `setTelemetryEnabled(false)` at start-up; nothing is posted from then on. A host or a
// test can point the posts at another intake origin, or at a transport of its own.
//
// Thread safety: every function may be called from any thread.

#include <memory>
#include <string>

namespace platform {
class HttpSession;
}

namespace korvane::elements {

inline constexpr const char* kDefaultTelemetryIntakeOrigin = "https://http-intake.logs.datadoghq.com";

void setTelemetryEnabled(bool enabled);
[[nodiscard]] bool telemetryEnabled();

// Every post goes to the intake origin, this path and the client token.
inline constexpr const char* kTelemetryIntakePath = "/v1/input/";

// Scheme and host (and port); a trailing slash is dropped. A logger takes the origin when it is
// built; the shared logger also follows later changes, from its next message on.
void setTelemetryIntakeOrigin(std::string origin);
[[nodiscard]] std::string telemetryIntakeOrigin();

// The transport telemetry posts through instead of the platform's shared session; null
// restores the shared session.
void setTelemetrySession(std::shared_ptr<platform::HttpSession> session);
// The installed transport, or null when posts go through `platform::sharedHttpSession()`.
[[nodiscard]] std::shared_ptr<platform::HttpSession> telemetrySession();

}  // namespace korvane::elements
