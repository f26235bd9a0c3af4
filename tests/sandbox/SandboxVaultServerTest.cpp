// The sandbox vault on the wire, without the element library: keys, bodies, token shapes,
// sessions and the proxy's refusals.

#include <gtest/gtest.h>

#include <future>

#include <nlohmann/json.hpp>

#include "platform/CurlSession.hpp"
#include "platform/HttpTestSupport.hpp"
#include "platform/LoopbackServer.hpp"
#include "sandbox/SandboxVaultServer.hpp"

namespace tovi::sandbox {
namespace {

constexpr const char* kKey = SandboxVaultServer::kDefaultApiKey;
constexpr const char* kCard =
    R"({"type": "card", "data": {"number": "5555555555554444", "expiration_month": 3, "expiration_year": "2031", "cvc": "123"}})";

class SandboxVault : public ::testing::Test {
protected:
    platform::HttpResponse exchange(std::string method, const std::string& path, std::string body = {},
                                    std::optional<std::string> key = kKey, platform::HttpHeaders headers = {}) {
        platform::HttpRequest request;
        request.method = std::move(method);
        request.url = vault.baseUrl() + path;
        request.body = std::move(body);
        request.headers = std::move(headers);
        if (key) request.headers.set("KV-API-KEY", *key);
        if (!request.body.empty()) request.headers.set("Content-Type", "application/json");
        std::promise<platform::HttpResult> done;
        session.dataTask(request, [&](platform::HttpResult r) { done.set_value(std::move(r)); })->resume();
        auto result = done.get_future().get();
        EXPECT_TRUE(result) << path;
        return result ? *result : platform::HttpResponse{};
    }

    SandboxVaultServer vault;
    platform::CurlSession session;
};

TEST_F(SandboxVault, EveryRouteWantsAKnownKey) {
    const std::pair<const char*, const char*> routes[] = {
        {"POST", "/tokenize"}, {"POST", "/tokens"}, {"GET", "/tokens/x"}, {"POST", "/sessions"}, {"GET", "/proxy"}};
    for (const auto& [method, path] : routes) {
        SCOPED_TRACE(path);
        EXPECT_EQ(exchange(method, path, kCard, std::nullopt).status, 401);
        EXPECT_EQ(exchange(method, path, kCard, "not-a-key").status, 401);
    }
    vault.addApiKey("added");
    EXPECT_EQ(exchange("POST", "/sessions", {}, "added").status, 201);
    EXPECT_EQ(vault.tokenCount(), 0u);
}

TEST_F(SandboxVault, HoldsOnlyTheLatestRequests) {
    const std::size_t kept = SandboxVaultServer::Options{}.keepRequests;
    for (std::size_t i = 0; i < kept + 3; ++i) exchange("POST", "/tokenize", kCard);
    const auto requests = vault.receivedRequests();
    EXPECT_EQ(requests.size(), kept);
    EXPECT_EQ(vault.requestCount(), kept + 3);
    EXPECT_EQ(vault.tokenCount(), kept + 3);
}

TEST_F(SandboxVault, MalformedBodiesAreRefusedWithoutEchoingValues) {
    const char* bodies[] = {
        "not json",
        "[1, 2]",
        R"({"type": "card"})",
        R"({"data": {"number": "4242424242424242"}})",
        R"({"type": "card", "data": {"number": "4242-4242-4242-4242", "expiration_month": 3, "expiration_year": 2031}})",
        R"({"type": "card", "data": {"number": "4242424242424242", "expiration_month": 13, "expiration_year": 2031}})",
        R"({"type": "card", "data": {"number": "4242424242424242", "expiration_month": 3, "expiration_year": 31}})",
        R"({"type": "card", "data": {"number": "4242424242424242", "expiration_month": 3, "expiration_year": 2031, "cvc": "98765"}})",
        R"({"ok": {"type": "card", "data": {"number": "4242424242424242", "expiration_month": 3, "expiration_year": 2031}}, "bad": 5})",
    };
    for (const char* body : bodies) {
        SCOPED_TRACE(body);
        for (const char* path : {"/tokenize", "/tokens"}) {
            const auto response = exchange("POST", path, body);
            EXPECT_EQ(response.status, 400) << path;
            for (const char* value : {"4242424242424242", "4242-4242", "98765"}) {
                EXPECT_EQ(response.body.find(value), std::string::npos) << path;
            }
        }
    }
    EXPECT_EQ(vault.tokenCount(), 0u) << "nothing stored from a refused request, nested ones included";
}

TEST_F(SandboxVault, TokenizeKeepsTheShapeAndMasksCards) {
    const std::string body = std::string(R"({"card": )") + kCard +
                             R"(, "more": [{"type": "token", "data": {"ssn": "1"}}, {"type": "token", "data": "x"}]})";
    const auto response = exchange("POST", "/tokenize", body);
    ASSERT_EQ(response.status, 201);
    const auto answer = nlohmann::json::parse(response.body);
    const auto& card = answer["card"];
    EXPECT_EQ(card["type"], "card");
    EXPECT_EQ(card["data"],
              (nlohmann::json{{"number", "555555XXXXXX4444"}, {"expiration_month", 3}, {"expiration_year", 2031}}));
    ASSERT_EQ(answer["more"].size(), 2u);
    EXPECT_EQ(answer["more"][1]["data"], "x");
    EXPECT_EQ(vault.tokenCount(), 3u);

    // Read back, the card has its data as given; the wallet sandbox sees the masked number.
    const std::string id = card["id"];
    const auto read = exchange("GET", "/tokens/" + id);
    ASSERT_EQ(read.status, 200);
    EXPECT_EQ(nlohmann::json::parse(read.body)["data"]["number"], "5555555555554444");
    std::optional<std::string> masked;
    vault.readMaskedNumber(id, [&](std::optional<std::string> m) { masked = std::move(m); });
    EXPECT_EQ(masked, "555555XXXXXX4444");
    masked = "unset";
    vault.readMaskedNumber(answer["more"][0]["id"], [&](std::optional<std::string> m) { masked = std::move(m); });
    EXPECT_EQ(masked, std::nullopt) << "not a card";
    EXPECT_EQ(exchange("GET", "/tokens/nope").status, 404);
    EXPECT_EQ(exchange("GET", "/tokens/" + id + "/x").status, 404);
}

TEST_F(SandboxVault, TheProxyRefusesWhatItCannotServe) {
    const std::string gone = http_test::closedBaseUrl();
    struct Row {
        const char* name;
        platform::HttpHeaders headers;
        int status;
    };
    const Row rows[] = {
        {"neither header", {}, 400},
        {"unknown proxy key", {{"KV-PROXY-KEY", "nope"}}, 404},
        {"not on this machine", {{"KV-PROXY-URL", "http://example.com"}}, 400},
        {"not http", {{"KV-PROXY-URL", "ftp://127.0.0.1/x"}}, 400},
        {"target gone", {{"KV-PROXY-URL", gone}}, 502},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(exchange("POST", "/proxy/x", "{}", kKey, row.headers).status, row.status);
    }
}

TEST_F(SandboxVault, StoppingCutsAForwardInFlightShort) {
    const auto stalls = http_test::stallingServer();
    platform::HttpRequest request;
    request.method = "GET";
    request.url = vault.baseUrl() + "/proxy";
    request.headers = {{"KV-API-KEY", kKey}, {"KV-PROXY-URL", stalls->baseUrl()}};
    std::promise<platform::HttpResult> done;
    session.dataTask(request, [&](platform::HttpResult r) { done.set_value(std::move(r)); })->resume();
    // Stop once the forward has reached the target.
    while (stalls->requestCount() == 0) std::this_thread::yield();
    vault.stop();
    auto result = done.get_future().get();
    if (result) {
        EXPECT_EQ(result->status, 502);
    }
}

}  // namespace
}  // namespace tovi::sandbox
