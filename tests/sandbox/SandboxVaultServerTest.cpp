// The sandbox vault on the wire, without the element library: keys, bodies, token shapes,
// sessions and the proxy's refusals.

#include <gtest/gtest.h>

#include <future>

#include <nlohmann/json.hpp>

#include "RawHttp.hpp"
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

TEST_F(SandboxVault, KeepsOnlyMetadataOfAcceptedRequests) {
    const std::size_t kept = SandboxVaultServer::Options{}.keepRequests;
    for (std::size_t i = 0; i < kept + 3; ++i) exchange("POST", "/tokenize", kCard);
    exchange("POST", "/tokenize", kCard, "not-a-key");
    exchange("POST", "/tokenize", kCard, std::nullopt);
    const auto records = vault.receivedRequests();
    ASSERT_EQ(records.size(), kept);
    EXPECT_EQ(vault.requestCount(), kept + 3) << "refused keys are neither kept nor counted";
    EXPECT_EQ(vault.tokenCount(), kept + 3);
    const auto& last = records.back();
    EXPECT_EQ(last.method, "POST");
    EXPECT_EQ(last.path, "/tokenize");
    EXPECT_EQ(last.status, 201);
    EXPECT_EQ(last.requestBytes, std::string_view(kCard).size());
    EXPECT_GT(last.responseBytes, 0u);
}

// What the vault refuses before any route runs, sent as no well-behaved client would: each
// answer is a problem body with the status, and nothing is stored or recorded.
TEST_F(SandboxVault, RefusalsOfHostileRequestsCarryAProblemBody) {
    const std::size_t limit = SandboxVaultServer::Options{}.maxBodyBytes;
    std::string chunked;
    for (std::size_t sent = 0; sent <= limit; sent += 65536) chunked += "10000\r\n" + std::string(65536, 'x') + "\r\n";
    chunked += "0\r\n\r\n";
    const std::string part = "--b\r\nContent-Disposition: form-data; name=\"card\"\r\n\r\n{}\r\n--b--\r\n";
    struct Row {
        const char* why;
        std::string bytes;
        int status;
    };
    const Row rows[] = {
        {"a declared length over the limit", raw_http::request("POST", "/tokenize", kKey, std::string(limit + 1, 'x')),
         413},
        {"a chunked body over the limit",
         "POST /tokenize HTTP/1.1\r\nHost: h\r\nKV-API-KEY: sandbox-api-key\r\nTransfer-Encoding: chunked\r\n\r\n" +
             chunked,
         413},
        {"a multipart body",
         raw_http::request("POST", "/tokens", kKey, part, "Content-Type: multipart/form-data; boundary=b\r\n"), 400},
        {"a multipart body without its boundary",
         raw_http::request("POST", "/tokens", kKey, part, "Content-Type: multipart/form-data\r\n"), 400},
        {"an unknown route", raw_http::request("GET", "/admin", kKey), 404},
        {"a target too long", raw_http::request("GET", "/tokens/" + std::string(9000, 'a'), kKey), 414},
        {"a request line that is no HTTP", "BREW /pot HTCPCP/1.0\r\n\r\n", 400},
        {"no key", raw_http::request("POST", "/tokenize", "", kCard), 401},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        raw_http::Connection connection(vault.port());
        const auto answer = connection.exchange(row.bytes, std::chrono::seconds(20));
        ASSERT_TRUE(answer.has_value()) << static_cast<int>(answer.error());
        EXPECT_EQ(answer->status, row.status);
        const auto body = nlohmann::json::parse(answer->body, nullptr, false);
        ASSERT_TRUE(body.is_object()) << answer->body;
        EXPECT_EQ(body["status"], row.status);
        EXPECT_TRUE(body["title"].is_string());
    }
    EXPECT_EQ(vault.tokenCount(), 0u);
    EXPECT_EQ(vault.requestCount(), 1u) << "only the multipart body reached a route";
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
        R"({"id": "4242424242424242/x", "type": "token", "data": "x"})",  // could never be read back
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

// A listening socket on 127.0.0.2, which no forward may ever reach.
class OtherHost {
public:
    OtherHost() : fd_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(0x7f000002);
        socklen_t length = sizeof address;
        if (::bind(fd_, reinterpret_cast<sockaddr*>(&address), length) != 0 || ::listen(fd_, 16) != 0 ||
            ::getsockname(fd_, reinterpret_cast<sockaddr*>(&address), &length) != 0) {
            ADD_FAILURE() << "cannot listen on 127.0.0.2";
        }
        port_ = ntohs(address.sin_port);
    }
    ~OtherHost() { ::close(fd_); }
    [[nodiscard]] int port() const { return port_; }
    [[nodiscard]] bool contacted() const {
        pollfd pending{fd_, POLLIN, 0};
        return ::poll(&pending, 1, 0) > 0;
    }

private:
    int fd_;
    int port_ = 0;
};

TEST_F(SandboxVault, AForwardStaysOnTheHostOfTheProxyUrl) {
    const OtherHost other;
    const std::string elsewhere = "127.0.0.2:" + std::to_string(other.port());
    const std::string closed = http_test::closedBaseUrl();
    platform::testing::LoopbackServer target;
    target.on("*", "*", [](const platform::testing::LoopbackRequest&) { return platform::testing::respond(200); });
    struct Row {
        const char* why;
        std::string target;
        std::string proxyUrl;
        int status;
    };
    const Row rows[] = {
        {"the path read as a user before another host", "/proxy@" + elsewhere + "/secret", closed, 404},
        {"the same with the @ escaped", "/proxy%40" + elsewhere + "/secret", closed, 404},
        {"an @ after the proxy path is a path segment", "/proxy/@" + elsewhere + "/secret", closed, 502},
        {"a user part in the proxy URL", "/proxy/x", "http://127.0.0.1:1@" + elsewhere, 400},
        {"a fragment in the proxy URL", "/proxy/x", closed + "#@" + elsewhere, 502},
        {"an escaped ? stays in the path", "/proxy/a%3Fq=1", target.baseUrl(), 200},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        raw_http::Connection connection(vault.port());
        const auto answer = connection.exchange(
            raw_http::request("GET", row.target, kKey, {}, "KV-PROXY-URL: " + row.proxyUrl + "\r\n"),
            std::chrono::seconds(20));
        ASSERT_TRUE(answer.has_value());
        EXPECT_EQ(answer->status, row.status);
        EXPECT_FALSE(other.contacted());
    }
    ASSERT_EQ(target.requestCount(), 1u);
    EXPECT_EQ(target.receivedRequests().at(0).path, "/a?q=1");
    EXPECT_EQ(target.receivedRequests().at(0).rawQuery, "");
}

// Each route fails as scripted, on its own, after the key check; latency delays its answers.
TEST_F(SandboxVault, RoutesFailAndWaitAsScripted) {
    vault.addProxyKey("echo", [](const SandboxVaultRequest&) { return SandboxVaultAnswer{200, {}, "ok"}; });
    const auto created = exchange("POST", "/tokens", kCard);
    const std::string id = nlohmann::json::parse(created.body)["id"];
    struct Row {
        SandboxVaultRoute route;
        const char* method;
        std::string path;
        const char* body;
        int status;
    };
    const Row rows[] = {
        {SandboxVaultRoute::tokenize, "POST", "/tokenize", kCard, 201},
        {SandboxVaultRoute::createToken, "POST", "/tokens", kCard, 201},
        {SandboxVaultRoute::readToken, "GET", "/tokens/" + id, "", 200},
        {SandboxVaultRoute::createSession, "POST", "/sessions", "", 201},
        {SandboxVaultRoute::proxy, "GET", "/proxy/p", "", 200},
    };
    const auto call = [&](const Row& row, std::optional<std::string> key = kKey) {
        return exchange(row.method, row.path, row.body, key, {{"KV-PROXY-KEY", "echo"}});
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.path);
        vault.failNext(row.route, 503, "Down for the demo", 2);
        EXPECT_EQ(call(row, "not-a-key").status, 401) << "the key comes first";
        for (int i = 0; i < 2; ++i) {
            const auto failed = call(row);
            EXPECT_EQ(failed.status, 503);
            EXPECT_EQ(nlohmann::json::parse(failed.body)["title"], "Down for the demo");
        }
        EXPECT_EQ(call(row).status, row.status);

        vault.failAlways(row.route, 429, "Slow down");
        for (const auto& other : rows) EXPECT_EQ(call(other).status, &other == &row ? 429 : other.status);
        vault.clearFailures(row.route);
        EXPECT_EQ(call(row).status, row.status);

        vault.setLatency(row.route, std::chrono::milliseconds(150));
        const auto started = std::chrono::steady_clock::now();
        EXPECT_EQ(call(row).status, row.status);
        EXPECT_GE(std::chrono::steady_clock::now() - started, std::chrono::milliseconds(150));
        EXPECT_GE(vault.receivedRequests().back().duration, std::chrono::milliseconds(150));
        vault.setLatency(row.route, std::chrono::milliseconds(0));
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
