#pragma once
// SandboxVaultServer: a card vault on 127.0.0.1, for tests and for the demo host.
//
// It answers the calls the product makes, over real HTTP on a random free port, from
// construction (well under a second) to destruction:
//
//   POST /tokenize     a token request ({"type", "data", ...}) becomes a token; a map of token
//                      requests (nested maps and arrays) comes back in the same shape with a
//                      token in each place. Cards ("type" "card") need "number" (13 to 19
//                      digits), "expiration_month" (1 to 12) and "expiration_year" (four
//                      digits), as integers or digit strings, and an optional 3- or 4-digit
//                      "cvc"; the answer shows the masked number ("424242XXXXXX4242") and the
//                      month and year as integers, never the CVC. A given "id" is 1 to 128
//                      letters, digits, "-" or "_".                           201
//   POST /tokens       one token request, answered like /tokenize.            201
//   GET  /tokens/{id}  the stored token with its data as it was given.        200, 404
//   POST /sessions     {"session_key", "nonce", "expires_at"}.                 201
//   *    /proxy[/...]  "KV-PROXY-KEY": answered by the handler added for that key (404 for
//                      an unknown key); otherwise "KV-PROXY-URL", which must be an http URL on
//                      127.0.0.1 or localhost: the request is forwarded to that host and port,
//                      at the URL's path followed by the request's path after "/proxy" and its
//                      query (the URL's own query and user are not used), with its body and
//                      its headers other than the KV- ones, and the answer is relayed (502
//                      when it can't be reached). Neither header: 400.
//
// Every route checks "KV-API-KEY" against the configured keys (401 otherwise). Every error
// answer carries a problem body ({"title", "status"} and, for a refused token request,
// "errors" naming the fields but never their values): a body that is no JSON object, a
// multipart body, a token request that breaks the rules above (400), a body over
// `Options::maxBodyBytes` (413), an unknown route (404). Tokens live in memory.
//
// Hostile clients: nothing is kept of a request before its key is checked, and of a checked
// one only `SandboxVaultRecord` metadata. A connection waiting for its next request, or
// stalled in the middle of one, is closed after the time-outs of `Options`, and never holds
// up other clients meanwhile.
//
// It is also a SandboxCardVault: the wallet sandbox can read the masked number of a card
// tokenized here.
//
// Usage:
//   tovi::sandbox::SandboxVaultServer vault;                 // key "sandbox-api-key"
//   vault.setLatency(SandboxVaultRoute::tokenize, std::chrono::milliseconds(400));
//   vault.failNext(SandboxVaultRoute::createSession, 503, "The vault is down for the demo.");
//   korvane::elements::KorvaneElements::setBasePath(vault.baseUrl());
//
// Thread safety: every member may be called from any thread. Handlers of proxy keys and the
// observer run on the server's worker threads, several at a time.

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Http.hpp"
#include "sandbox/SandboxCardVault.hpp"

namespace tovi::sandbox {

// The routes a host can script.
enum class SandboxVaultRoute { tokenize, createToken, readToken, createSession, proxy };
inline constexpr std::size_t kSandboxVaultRouteCount = 5;
// "POST /tokenize", "GET /tokens/*", ...: the route as a person scripting it reads it.
[[nodiscard]] std::string routeName(SandboxVaultRoute route);
// The route of that name; absent for others.
[[nodiscard]] std::optional<SandboxVaultRoute> routeNamed(std::string_view name);

// A request as a proxy key's handler (or the observer) sees it.
struct SandboxVaultRequest {
    std::string method;
    // Without the query.
    std::string path;
    std::string rawQuery;
    platform::HttpHeaders headers;
    std::string body;
};

struct SandboxVaultAnswer {
    int status = 200;
    platform::HttpHeaders headers;
    std::string body;
};

// What the vault keeps of a request whose key it accepted: never a header or a body.
struct SandboxVaultRecord {
    std::string method;
    // Without the query.
    std::string path;
    int status = 0;
    std::size_t requestBytes = 0;   // of the body
    std::size_t responseBytes = 0;  // of the body
    std::chrono::system_clock::time_point receivedAt;
    // Until the answer was ready, scripted latency included.
    std::chrono::milliseconds duration{0};
};

using SandboxProxyHandler = std::function<SandboxVaultAnswer(const SandboxVaultRequest&)>;

class SandboxVaultServer final : public SandboxCardVault {
public:
    static constexpr const char* kDefaultApiKey = "sandbox-api-key";

    struct Options {
        std::vector<std::string> apiKeys{kDefaultApiKey};
        // How long a forwarded proxy request may take.
        std::chrono::milliseconds proxyTimeout{30'000};
        // How many records of the latest requests `receivedRequests` keeps.
        std::size_t keepRequests = 64;
        // A larger request body is answered 413 and never held.
        std::size_t maxBodyBytes = 1u << 20;
        // How long one read of a request, or one write of an answer, may wait for the client,
        // and how long a connection may wait for its next request (whole seconds).
        std::chrono::milliseconds readTimeout{2'000};
        std::chrono::milliseconds writeTimeout{2'000};
        std::chrono::seconds idleTimeout{2};
        // Sees each request whose key was accepted, in full, as it arrives; the vault itself
        // keeps none of it. For tests that check what a client sends.
        std::function<void(const SandboxVaultRequest&)> observer;
    };

    SandboxVaultServer();
    explicit SandboxVaultServer(Options options);
    ~SandboxVaultServer() override;
    SandboxVaultServer(const SandboxVaultServer&) = delete;
    SandboxVaultServer& operator=(const SandboxVaultServer&) = delete;

    // "http://127.0.0.1:<port>", no trailing slash.
    [[nodiscard]] std::string baseUrl() const;
    [[nodiscard]] int port() const;

    void addApiKey(std::string key);
    void addProxyKey(std::string key, SandboxProxyHandler handler);

    // Scripting, per route; each applies to requests that arrive afterwards, once their key is
    // accepted. A failure is answered with its status and a problem body titled `title`, and
    // the route does nothing else; latency delays every answer of the route.
    void setLatency(SandboxVaultRoute route, std::chrono::milliseconds latency);
    void failNext(SandboxVaultRoute route, int status, std::string title, int times = 1);
    void failAlways(SandboxVaultRoute route, int status, std::string title);
    void clearFailures(SandboxVaultRoute route);

    // Records of the latest accepted requests, oldest first, at most `Options::keepRequests`.
    [[nodiscard]] std::vector<SandboxVaultRecord> receivedRequests() const;
    // Accepted requests since start or the last clear.
    [[nodiscard]] std::size_t requestCount() const;
    void clearReceivedRequests();

    [[nodiscard]] std::size_t tokenCount() const;

    // SandboxCardVault: completes at once, on the calling thread.
    void readMaskedNumber(std::string tokenId,
                          std::move_only_function<void(std::optional<std::string>)> completion) override;

    // Stops answering; forwards in flight end with 502. Also done by the destructor.
    void stop();

    class Impl;

private:
    std::unique_ptr<Impl> impl_;
};

}  // namespace tovi::sandbox
