#pragma once
// The one loopback server that every HTTP benchmark of the process talks to, so that the raw
// transport, the shared session and the vault client are measured against the same server,
// the same body and the same number of requests in flight.
//
// Routes: GET "/token" and GET "/tokens/<id>" both answer 200 with `kTokenBody` as JSON.
// Thread safety: created on first use (thread-safe static), never destroyed.

#include "platform/LoopbackServer.hpp"

namespace tovi_bench {

inline constexpr int kInFlight = 16;
inline constexpr const char* kTokenBody =
    R"({"id":"tok_123","type":"card","fingerprint":"f2a9","mask":"XXXXXXXXXXXX4242"})";

inline platform::testing::LoopbackServer& loopbackServer() {
    static auto* instance = [] {
        platform::testing::LoopbackServer::Options options;
        options.threads = 64;
        options.keepRequests = 0;
        auto* s = new platform::testing::LoopbackServer(std::move(options));
        auto answer = [](const platform::testing::LoopbackRequest&) {
            return platform::testing::respond(200, kTokenBody, {{"Content-Type", "application/json"}});
        };
        s->on("GET", "/token", answer);
        s->on("GET", "/tokens/*", answer);
        return s;
    }();
    return *instance;
}

}  // namespace tovi_bench
