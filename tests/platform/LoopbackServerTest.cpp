#include "platform/LoopbackServer.hpp"

#include "platform/CurlSession.hpp"
#include "platform/HttpTestSupport.hpp"

#include <gtest/gtest.h>

namespace {

using platform::testing::cutMidBody;
using platform::testing::delayed;
using platform::testing::LoopbackRequest;
using platform::testing::LoopbackResponse;
using platform::testing::LoopbackServer;
using platform::testing::respond;
using namespace std::chrono_literals;

LoopbackServer::Options keeping(std::size_t requests) {
    LoopbackServer::Options options;
    options.keepRequests = requests;
    return options;
}

class LoopbackServerTest : public ::testing::Test {
protected:
    platform::HttpResult fetch(const std::string& method, const std::string& pathAndQuery) {
        return http_test::perform(session, http_test::request(method, server.baseUrl() + pathAndQuery));
    }
    LoopbackServer server;
    platform::CurlSession session;
};

TEST_F(LoopbackServerTest, QueryItemsKeepOrderAndAreDecoded) {
    server.on("GET", "/q", [](const LoopbackRequest&) { return LoopbackResponse{}; });
    ASSERT_TRUE(fetch("GET", "/q?z=1&a=%20two%26&flag&a=3&plus=a+b").has_value());
    const auto seen = server.receivedRequests().at(0);
    EXPECT_EQ(seen.path, "/q");
    EXPECT_EQ(seen.rawQuery, "z=1&a=%20two%26&flag&a=3&plus=a+b");
    const std::vector<std::pair<std::string, std::string>> expected = {
        {"z", "1"}, {"a", " two&"}, {"flag", ""}, {"a", "3"}, {"plus", "a+b"}};
    EXPECT_EQ(seen.query, expected);
}

TEST_F(LoopbackServerTest, RoutesByMethodAndPatternLatestFirst) {
    server.on("GET", "/v1/*", [](const LoopbackRequest&) { return respond(200, "prefix"); });
    server.on("GET", "/v1/exact", [](const LoopbackRequest&) { return respond(200, "exact"); });
    server.on("*", "/any", [](const LoopbackRequest& r) { return respond(200, "any " + r.method); });
    server.on("POST", "/v1/*", [](const LoopbackRequest&) { return respond(201); });
    struct Case {
        const char* method;
        const char* path;
        int status;
        const char* body;
    };
    const std::vector<Case> cases = {
        {"GET", "/v1/exact", 200, "exact"},
        {"GET", "/v1/other/deeper", 200, "prefix"},
        {"GET", "/v1", 404, ""},  // the prefix is "/v1/"
        {"POST", "/v1/exact", 201, ""},
        {"PUT", "/any", 200, "any PUT"},
        {"DELETE", "/v1/exact", 404, ""},
        {"GET", "/nowhere", 404, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.method) + " " + c.path);
        const auto result = fetch(c.method, c.path);
        ASSERT_TRUE(result.has_value()) << result.error().message;
        EXPECT_EQ(result->status, c.status);
        EXPECT_EQ(result->body, c.body);
    }
    EXPECT_EQ(server.requestCount(), cases.size());  // unmatched requests are recorded too
}

TEST_F(LoopbackServerTest, ResponseHeadersAndContentTypeGoOutAsGiven) {
    server.on("GET", "/h", [](const LoopbackRequest&) {
        auto r = respond(200, "{}");
        r.headers.add("Content-Type", "application/json");
        r.headers.add("X-Multi", "1");
        r.headers.add("X-Multi", "2");
        return r;
    });
    const auto result = fetch("GET", "/h");
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->headers.getAll("Content-Type"), std::vector<std::string>{"application/json"});
    EXPECT_EQ(result->headers.getAll("X-Multi"), (std::vector<std::string>{"1", "2"}));
}

TEST_F(LoopbackServerTest, KeepsOnlyTheLatestRequestsButCountsThemAll) {
    LoopbackServer bounded(keeping(2));
    bounded.on("GET", "/*", [](const LoopbackRequest&) { return respond(200, "ok"); });
    for (const char* path : {"/1", "/2", "/3"}) {
        ASSERT_TRUE(http_test::perform(session, http_test::get(bounded.baseUrl() + path)).has_value());
    }
    const auto kept = bounded.receivedRequests();
    ASSERT_EQ(kept.size(), 2u);
    EXPECT_EQ(kept[0].path, "/2");
    EXPECT_EQ(kept[1].path, "/3");
    EXPECT_EQ(bounded.requestCount(), 3u);
    bounded.clearReceivedRequests();
    EXPECT_EQ(bounded.requestCount(), 0u);
    EXPECT_TRUE(bounded.receivedRequests().empty());

    LoopbackServer none(keeping(0));
    none.on("GET", "/*", [](const LoopbackRequest&) { return respond(200, "ok"); });
    ASSERT_TRUE(http_test::perform(session, http_test::get(none.baseUrl() + "/x")).has_value());
    EXPECT_TRUE(none.receivedRequests().empty());
    EXPECT_EQ(none.requestCount(), 1u);
}

TEST_F(LoopbackServerTest, StoppingCutsPendingDelaysShort) {
    server.on("GET", "/slow", [](const LoopbackRequest&) { return delayed(1h, respond(200, "x")); });
    http_test::Completions completions;
    auto task = session.dataTask(http_test::get(server.baseUrl() + "/slow"), completions.callback(0));
    task->resume();
    while (server.requestCount() == 0) std::this_thread::yield();
    server.stop();  // must return although the handler still "waits" an hour
    ASSERT_TRUE(completions.waitFor(1));
    const auto result = completions.results().at(0).second;
    ASSERT_TRUE(result.has_value()) << result.error().message;
    EXPECT_EQ(result->status, 503);
}

}  // namespace
