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
//                      month and year as integers, never the CVC.             201
//   POST /tokens       one token request, answered like /tokenize.            201
//   GET  /tokens/{id}  the stored token with its data as it was given.        200, 404
//   POST /sessions     {"session_key", "nonce", "expires_at"}.                 201
//   *    /proxy[...]   "KV-PROXY-KEY": answered by the handler added for that key (404 for
//                      an unknown key); otherwise "KV-PROXY-URL", which must be an http URL on
//                      127.0.0.1 or localhost: the request (path after "/proxy", query, body,
//                      headers other than the KV- ones) is forwarded there and the answer
//                      relayed (502 when it can't be reached). Neither header: 400.
//
// Every route checks "KV-API-KEY" against the configured keys (401 otherwise); a body that is
// no JSON object, or a token request that breaks the rules above, is 400 with a problem body
// that names the fields but never their values. Unknown routes are 404. Tokens live in memory.
//
// It is also a SandboxCardVault: the wallet sandbox can read the masked number of a card
// tokenized here.
//
// Every request received is kept for inspection (bodies included) until
// `clearReceivedRequests()`; a long-running host should clear them now and then.
//
// Usage:
//   tovi::sandbox::SandboxVaultServer vault;                 // key "sandbox-api-key"
//   korvane::elements::KorvaneElements::setBasePath(vault.baseUrl());
//
// Thread safety: every member may be called from any thread. Handlers of proxy keys run on the
// server's worker threads, several at a time.

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Http.hpp"
#include "sandbox/SandboxCardVault.hpp"

namespace tovi::sandbox {

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

using SandboxProxyHandler = std::function<SandboxVaultAnswer(const SandboxVaultRequest&)>;

class SandboxVaultServer final : public SandboxCardVault {
public:
    static constexpr const char* kDefaultApiKey = "sandbox-api-key";

    struct Options {
        std::vector<std::string> apiKeys{kDefaultApiKey};
        // How long a forwarded proxy request may take.
        std::chrono::milliseconds proxyTimeout{30'000};
        // How many of the latest requests `receivedRequests` keeps: a host may leave the
        // sandbox running for days, and tokenize bodies hold card numbers.
        std::size_t keepRequests = 64;
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

    // The latest requests, oldest first, at most `Options::keepRequests` of them.
    [[nodiscard]] std::vector<SandboxVaultRequest> receivedRequests() const;
    // All requests since start or the last clear.
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
