// The direct HTTP helpers over a real socket: methods, JSON and form bodies, headers, raw
// response trees, and the ways a call ends early.

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "ElementTestSupport.hpp"
#include "KorvaneElements/ElementReferenceValue.hpp"
#include "KorvaneElements/KorvaneElements.hpp"
#include "platform/LoopbackServer.hpp"

namespace {

using namespace korvane::elements;
using anycodable::Map;
using platform::testing::LoopbackRequest;

std::shared_ptr<ElementValueReference> element(std::string text, bool complete = true,
                                               ElementValueType type = ElementValueType::string) {
    return std::make_shared<ElementValueReference>(
        "el", [text] { return text; }, complete, type);
}

struct Outcome {
    std::atomic<int> calls = 0;
    std::optional<platform::HttpResponse> response;
    std::optional<JSON> tree;
    std::optional<ElementsError> error;
    KorvaneElements::HttpCompletion completion() {
        return [this](std::optional<platform::HttpResponse> r, std::optional<JSON> t, std::optional<ElementsError> e) {
            response = std::move(r);
            tree = std::move(t);
            error = std::move(e);
            ++calls;
        };
    }
    bool wait() const {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (calls.load() == 0 && std::chrono::steady_clock::now() < deadline) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return calls.load() > 0;
    }
};

class HttpClientHelpers : public ::testing::Test {
protected:
    void SetUp() override {
        server.on("*", "/echo", [](const LoopbackRequest& r) {
            const std::string answer = R"({"method":")" + r.method + R"(","n":7,"nested":{"list":[1,"two"]}})";
            return platform::testing::respond(200, answer, {{"Content-Type", "application/json"}});
        });
    }
    std::string url() const { return server.baseUrl() + "/echo"; }

    elements_test::TelemetryCapture telemetry;
    platform::testing::LoopbackServer server;
};

TEST_F(HttpClientHelpers, EachMethodGoesOutAndAnswersARawTree) {
    using Call = std::function<void(const std::string&, KorvaneElements::HttpCompletion)>;
    using WithBody = void (*)(std::string, std::optional<Map>, std::optional<Config>, KorvaneElements::HttpCompletion);
    const auto withBody = [](WithBody call) -> Call {
        return [call](auto& u, auto c) { call(u, Map{{"a", 1}}, std::nullopt, std::move(c)); };
    };
    const std::pair<const char*, Call> rows[] = {
        {"POST", withBody(&KorvaneElements::post)},
        {"PUT", withBody(&KorvaneElements::put)},
        {"PATCH", withBody(&KorvaneElements::patch)},
        {"GET", [](auto& u, auto c) { KorvaneElements::get(u, std::nullopt, std::move(c)); }},
        {"DELETE", [](auto& u, auto c) { KorvaneElements::delete_(u, std::nullopt, std::move(c)); }},
    };
    for (const auto& [method, call] : rows) {
        SCOPED_TRACE(method);
        server.clearReceivedRequests();
        Outcome out;
        const auto logged = telemetry.bodies().size();
        call(url(), out.completion());
        EXPECT_EQ(telemetry.bodies().at(logged),
                  R"({"message":"Making )" + std::string(method) + " request to " + url() + R"(","level":"info"})");
        ASSERT_TRUE(out.wait());
        ASSERT_FALSE(out.error) << describe(*out.error);
        EXPECT_EQ(server.receivedRequests().at(0).method, method);
        ASSERT_TRUE(out.tree);
        EXPECT_EQ(*(*out.tree)["method"]->rawValue()->get<std::string>(), method);
        EXPECT_EQ(*(*out.tree)["n"]->rawValue()->get<std::int64_t>(), 7);
        const auto list = (*out.tree)["nested"].value()["list"];
        ASSERT_TRUE(list);
        EXPECT_EQ(*list.value()[1]->rawValue()->get<std::string>(), "two");
    }
}

TEST_F(HttpClientHelpers, JsonAndFormBodiesCarryTheValues) {
    Map payload{{"card", Map{{"number", elementValue(element("4242424242424242"))},
                             {"year", elementValue(element("2039", true, ElementValueType::int_))}}},
                {"tags", anycodable::Array{"a", Map{{"k", "v"}}}}};
    struct Row {
        const char* name;
        std::optional<Config> config;
        std::optional<std::string> contentType;
        std::string body;
    };
    const Row rows[] = {
        {"no config: JSON body, no header", std::nullopt, std::nullopt,
         R"({"card":{"number":"4242424242424242","year":2039},"tags":["a",{"k":"v"}]})"},
        {"config without a type: JSON", Config{{{"X-A", "1"}}}, "application/json",
         R"({"card":{"number":"4242424242424242","year":2039},"tags":["a",{"k":"v"}]})"},
        {"form", Config{{{"Content-Type", "application/x-www-form-urlencoded"}}}, "application/x-www-form-urlencoded",
         "card[number]=4242424242424242&card[year]=2039&tags[0]=a&tags[1][k]=v"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        server.clearReceivedRequests();
        Outcome out;
        KorvaneElements::post(url(), payload, row.config, out.completion());
        ASSERT_TRUE(out.wait());
        const auto sent = server.receivedRequests().at(0);
        EXPECT_EQ(sent.body, row.body);
        EXPECT_EQ(sent.header("Content-Type"), row.contentType);
        if (row.config && row.config->headers.contains("X-A")) {
            EXPECT_EQ(sent.header("X-A"), "1");
        }
    }
    for (const auto& body : telemetry.bodies()) EXPECT_EQ(body.find("4242424242424242"), std::string::npos);
}

TEST_F(HttpClientHelpers, CallsThatEndBeforeTheWire) {
    Outcome badUrl;
    KorvaneElements::get("not a url", std::nullopt, badUrl.completion());
    EXPECT_EQ(badUrl.calls.load(), 1) << "at once";
    EXPECT_EQ(std::get<HttpClientError>(*badUrl.error), HttpClientError::invalidURL);

    Outcome incomplete;
    KorvaneElements::post(url(), Map{{"n", elementValue(element("42", false))}}, std::nullopt, incomplete.completion());
    EXPECT_EQ(incomplete.calls.load(), 1);
    EXPECT_EQ(std::get<HttpClientError>(*incomplete.error), HttpClientError::invalidRequest);
    EXPECT_EQ(server.requestCount(), 0u);
}

TEST_F(HttpClientHelpers, NoResponseOrNoJsonIsAnError) {
    std::string gone;
    {
        platform::testing::LoopbackServer closed;
        gone = closed.baseUrl();
    }
    Outcome refused;
    KorvaneElements::get(gone + "/x", std::nullopt, refused.completion());
    ASSERT_TRUE(refused.wait());
    EXPECT_EQ(std::get<HttpClientError>(*refused.error), HttpClientError::invalidRequest);
    EXPECT_FALSE(refused.response);

    server.on("GET", "/garbage", [](const LoopbackRequest&) { return platform::testing::respond(200, "<html>"); });
    server.on("GET", "/empty", [](const LoopbackRequest&) { return platform::testing::respond(204); });
    server.on("GET", "/list", [](const LoopbackRequest&) { return platform::testing::respond(200, "[1]"); });
    for (const char* path : {"/garbage", "/empty", "/list"}) {
        SCOPED_TRACE(path);
        Outcome out;
        KorvaneElements::get(server.baseUrl() + path, std::nullopt, out.completion());
        ASSERT_TRUE(out.wait());
        ASSERT_TRUE(out.error);
        EXPECT_NE(std::get_if<anycodable::DecodingError>(&*out.error), nullptr);
        ASSERT_TRUE(out.response);
        EXPECT_FALSE(out.tree);
    }
}

TEST(HttpClientHelpersDeathTest, UnsupportedContentTypeStops) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(KorvaneElements::post("http://127.0.0.1:9/x", Map{{"a", 1}}, Config{{{"Content-Type", "text/plain"}}},
                                       [](auto, auto, auto) {}),
                 "Content-Type not supported");
}

TEST(ProxyDeathTest, AnInvalidUrlAndAnUnwritableBodyStop) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    // The query is not percent-encoded, so a blank in it makes the URL invalid.
    ProxyHttpRequest badUrl;
    badUrl.url = "http://127.0.0.1:9/proxy";
    badUrl.query = std::map<std::string, std::string>{{"q", "a b"}};
    EXPECT_DEATH(KorvaneElements::proxy(std::nullopt, std::nullopt, std::nullopt, badUrl, [](auto, auto, auto) {}),
                 "Invalid proxy URL");
    ProxyHttpRequest inArray;
    inArray.url = "http://127.0.0.1:9/proxy";
    inArray.body = Map{{"list", anycodable::Array{elementValue(element("4242"))}}};
    EXPECT_DEATH(KorvaneElements::proxy(std::nullopt, std::nullopt, std::nullopt, inArray, [](auto, auto, auto) {}),
                 "cannot be written as JSON");
}

}  // namespace
