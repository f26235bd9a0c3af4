// The element library's proxy call through the sandbox vault: request shape, headers, the two
// ways the sandbox answers (a proxy key's handler, or forwarding to a loopback URL), and leaves
// that stay opaque unless the answer says otherwise.

#include <nlohmann/json.hpp>

#include "VaultTestSupport.hpp"

namespace vault_test {
namespace {

using korvane::elements::HttpMethod;
using korvane::elements::ProxyError;
using korvane::elements::ProxyHttpRequest;
using platform::testing::LoopbackRequest;
using tovi::sandbox::SandboxVaultAnswer;
using tovi::sandbox::SandboxVaultRequest;

class ElementsProxy : public VaultTest {
protected:
    void SetUp() override {
        VaultTest::SetUp();
        vault.addProxyKey("echo-key", [](const SandboxVaultRequest&) {
            return SandboxVaultAnswer{200,
                                      {{"Content-Type", "application/json"}},
                                      R"({"card": {"number": "4111111111111111", "tags": ["a", 7]}, "ok": true})"};
        });
    }

    // Runs one proxy call and waits for its completion.
    void run(HttpOutcome& out, std::optional<std::string> apiKey, std::optional<std::string> proxyKey,
             std::optional<std::string> proxyUrl, std::optional<ProxyHttpRequest> request) {
        KorvaneElements::proxy(std::move(apiKey), std::move(proxyKey), std::move(proxyUrl), std::move(request),
                               out.completion());
        ASSERT_TRUE(waitFor([&] { return out.calls.load() > 0; }));
    }
};

// The vault keeps nothing of a refused call, so this one goes to a recording server that
// refuses it the same way.
TEST_F(ElementsProxy, NoRequestSendsAGetToTheProxyPathWithoutBodyOrStaticKey) {
    platform::testing::LoopbackServer recorder;
    recorder.on("*", "*", [](const LoopbackRequest&) {
        return platform::testing::respond(401, R"({"title": "Unauthorized", "status": 401})");
    });
    KorvaneElements::setBasePath(recorder.baseUrl());
    HttpOutcome out;
    run(out, std::nullopt, "echo-key", std::nullopt, std::nullopt);
    ASSERT_EQ(recorder.requestCount(), 1u);
    const auto sent = recorder.receivedRequests().at(0);
    EXPECT_EQ(sent.method, "GET");
    EXPECT_EQ(sent.path, "/proxy");
    EXPECT_EQ(sent.body, "");
    EXPECT_EQ(sent.headers.get("Content-Type"), "Application/json");
    EXPECT_TRUE(sent.headers.get("KV-TRACE-ID"));
    EXPECT_FALSE(sent.headers.contains("KV-API-KEY")) << "the static key is not used by the proxy";
    // The call was refused, and the status plays no part: a parseable body is a success.
    ASSERT_TRUE(out.response);
    EXPECT_EQ(out.response->status, 401);
    EXPECT_FALSE(out.error);
    ASSERT_TRUE(out.tree);
    EXPECT_TRUE((*out.tree)["title"]);
}

TEST_F(ElementsProxy, UrlPathAndQueryAreJoinedAndTheBodyCarriesTheValues) {
    Card card;
    ProxyHttpRequest request;
    request.method = HttpMethod::post;
    request.url = vault.baseUrl() + "/proxy";
    request.path = "/charges/c1";
    request.query = std::map<std::string, std::string>{{"a", "1"}, {"b", "x,y/z"}};
    request.body = card.body();
    request.headers = std::map<std::string, std::string>{{"X-Merchant", "m1"}, {"Content-Type", "text/plain"}};
    HttpOutcome out;
    run(out, "sandbox-api-key", "echo-key", std::nullopt, request);
    ASSERT_FALSE(out.error);
    const auto sent = wire.requests().at(0);
    EXPECT_EQ(sent.method, "POST");
    EXPECT_EQ(sent.path, "/proxy/charges/c1");
    EXPECT_EQ(sent.rawQuery, "a=1&b=x,y/z") << "no percent-encoding";
    EXPECT_EQ(sent.headers.get("X-Merchant"), "m1");
    EXPECT_EQ(sent.headers.get("Content-Type"), "Application/json") << "the library's header wins";
    EXPECT_EQ(sent.headers.get("KV-API-KEY"), "sandbox-api-key");
    EXPECT_EQ(nlohmann::json::parse(sent.body)["data"], kCardData);
    const auto started = telemetryWith("Starting API request").at(0);
    EXPECT_EQ(started["endpoint"], "POST " + vault.baseUrl() + "/proxy");
    EXPECT_EQ(started["proxyHttpRequestPath"], "/charges/c1");
    EXPECT_EQ(started["proxyHttpRequestQuery"]["b"], "x,y/z");
}

TEST_F(ElementsProxy, TheProxyKeyWinsOverTheProxyUrl) {
    HttpOutcome out;
    run(out, "sandbox-api-key", "echo-key", "http://127.0.0.1:9/elsewhere", std::nullopt);
    const auto sent = wire.requests().at(0);
    EXPECT_EQ(sent.headers.get("KV-PROXY-KEY"), "echo-key");
    EXPECT_FALSE(sent.headers.contains("KV-PROXY-URL"));
    EXPECT_FALSE(out.error);
}

TEST_F(ElementsProxy, LeavesAreOpaqueUnlessTheRawHeaderComesInAnyCase) {
    const char* raw[] = {"kv-expose-raw-proxy-response", "KV-EXPOSE-RAW-PROXY-RESPONSE",
                         "Kv-Expose-Raw-Proxy-Response"};
    for (const char* header : raw) {
        SCOPED_TRACE(header);
        vault.addProxyKey("raw-key", [header](const SandboxVaultRequest&) {
            return SandboxVaultAnswer{
                200, {{header, "whatever"}}, R"({"card": {"number": "4111111111111111"}, "n": 7})"};
        });
        HttpOutcome out;
        run(out, "sandbox-api-key", "raw-key", std::nullopt, std::nullopt);
        ASSERT_TRUE(out.tree);
        const auto number = (*out.tree)["card"].value()["number"];
        ASSERT_TRUE(number && number->rawValue());
        EXPECT_EQ(*number->rawValue()->get<std::string>(), "4111111111111111");
        EXPECT_EQ(*(*out.tree)["n"]->rawValue()->get<std::int64_t>(), 7);
    }

    HttpOutcome hidden;
    run(hidden, "sandbox-api-key", "echo-key", std::nullopt, std::nullopt);
    ASSERT_TRUE(hidden.tree);
    const auto card = (*hidden.tree)["card"];
    ASSERT_TRUE(card);
    const auto number = card.value()["number"];
    ASSERT_TRUE(number);
    EXPECT_FALSE(number->rawValue());
    ASSERT_NE(number->elementValueReference(), nullptr);
    const auto tags = card.value()["tags"];
    ASSERT_TRUE(tags && tags->arrayValue());
    EXPECT_EQ(tags->arrayValue()->size(), 2u);
    EXPECT_NE(tags.value()[1]->elementValueReference(), nullptr);
    EXPECT_EQ(hidden.response->body, "") << "the host doesn't get the bytes behind the opaque leaves";

    // An opaque leaf fills an element.
    auto field = std::make_shared<korvane::elements::CardNumberUITextField>();
    field->setValue(number->elementValueReference());
    EXPECT_TRUE(field->metadata().complete);
}

TEST_F(ElementsProxy, AnErrorStatusWithAnEmptyBodyIsASuccessWithAnEmptyTree) {
    vault.addProxyKey("fails", [](const SandboxVaultRequest&) { return SandboxVaultAnswer{500, {}, ""}; });
    HttpOutcome out;
    run(out, "sandbox-api-key", "fails", std::nullopt, std::nullopt);
    EXPECT_FALSE(out.error);
    ASSERT_TRUE(out.response);
    EXPECT_EQ(out.response->status, 500);
    ASSERT_TRUE(out.tree && out.tree->dictionaryValue());
    EXPECT_TRUE(out.tree->dictionaryValue()->empty());
    ASSERT_TRUE(waitFor([&] { return !telemetryWith("Successful API response w/ empty/nil body").empty(); }));
}

TEST_F(ElementsProxy, ForwardingThroughTheProxyUrlReachesTheTargetWithTheValues) {
    platform::testing::LoopbackServer target;
    target.on("POST", "/pay", [](const LoopbackRequest&) {
        return platform::testing::respond(201, R"({"status": "paid"})", {{"Content-Type", "application/json"}});
    });
    Card card;
    ProxyHttpRequest request;
    request.method = HttpMethod::post;
    request.path = "/pay";
    request.query = std::map<std::string, std::string>{{"q", "1"}};
    request.body = card.body();
    HttpOutcome out;
    run(out, "sandbox-api-key", std::nullopt, target.baseUrl(), request);
    ASSERT_FALSE(out.error);
    EXPECT_EQ(out.response->status, 201);
    ASSERT_EQ(target.requestCount(), 1u);
    const auto arrived = target.receivedRequests().at(0);
    EXPECT_EQ(arrived.path, "/pay");
    EXPECT_EQ(arrived.rawQuery, "q=1");
    EXPECT_FALSE(arrived.headers.contains("KV-API-KEY"));
    EXPECT_EQ(nlohmann::json::parse(arrived.body)["data"], kCardData);
    EXPECT_NE((*out.tree)["status"]->elementValueReference(), nullptr);
}

TEST_F(ElementsProxy, AnIncompleteElementSendsNothing) {
    Card card("4242", "1239", "737");
    ProxyHttpRequest request;
    request.method = HttpMethod::post;
    request.body = card.body();
    HttpOutcome out;
    KorvaneElements::proxy("sandbox-api-key", "echo-key", std::nullopt, request, out.completion());
    EXPECT_EQ(out.calls.load(), 1) << "before the call returned";
    EXPECT_EQ(std::get<ProxyError>(*out.error), ProxyError::invalidInput);
    EXPECT_EQ(vault.requestCount(), 0u);
}

TEST_F(ElementsProxy, FaultsEachEndInOneErrorOrAParseFailure) {
    const auto stalls = http_test::stallingServer();
    vault.addProxyKey("garbage", [](const SandboxVaultRequest&) {
        return SandboxVaultAnswer{200, {}, "{\"a\": nope"};
    });
    KorvaneElements::setHttpSession(std::make_shared<ImpatientSession>(std::chrono::milliseconds(300)));

    ProxyHttpRequest toRefused;
    toRefused.url = http_test::closedBaseUrl() + "/proxy";
    HttpOutcome a;
    run(a, "sandbox-api-key", "echo-key", std::nullopt, toRefused);
    EXPECT_EQ(std::get<ProxyError>(*a.error), ProxyError::invalidRequest);
    EXPECT_FALSE(a.response);

    HttpOutcome b;
    run(b, "sandbox-api-key", std::nullopt, stalls->baseUrl(), std::nullopt);
    EXPECT_EQ(std::get<ProxyError>(*b.error), ProxyError::invalidRequest);

    HttpOutcome c;
    run(c, "sandbox-api-key", "garbage", std::nullopt, std::nullopt);
    ASSERT_TRUE(c.error);
    EXPECT_NE(std::get_if<anycodable::DecodingError>(&*c.error), nullptr);
    EXPECT_TRUE(c.response);
    EXPECT_FALSE(c.tree);

    ASSERT_TRUE(waitFor([&] { return telemetryWith("Invalid proxy request").size() == 2; }));
    for (const auto* out : {&a, &b, &c}) EXPECT_EQ(out->calls.load(), 1);
}

}  // namespace
}  // namespace vault_test
