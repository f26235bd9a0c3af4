#include "platform/CurlSession.hpp"

#include "platform/Base64.hpp"
#include "platform/HttpTestSupport.hpp"
#include "platform/LoopbackServer.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace {

using platform::ChallengeAnswer;
using platform::ChallengeDisposition;
using platform::CurlSession;
using platform::HttpErrorCode;
using platform::HttpHeaders;
using platform::HttpRequest;
using platform::testing::cutMidBody;
using platform::testing::delayed;
using platform::testing::LoopbackRequest;
using platform::testing::LoopbackResponse;
using platform::testing::LoopbackServer;
using platform::testing::respond;
using namespace std::chrono_literals;

LoopbackResponse echo(const LoopbackRequest& r) {
    LoopbackResponse response;
    response.headers.set("X-Echo-Method", r.method);
    response.body = r.body;
    return response;
}

class CurlSessionTest : public ::testing::Test {
protected:
    void SetUp() override { server.on("*", "/echo", echo); }
    LoopbackServer server;
    CurlSession session;
};

struct WireCase {
    const char* method;
    std::string body;
    HttpHeaders headers;
};

TEST_F(CurlSessionTest, MethodHeadersAndBodyArriveAsGiven) {
    const std::vector<WireCase> cases = {
        {"GET", "", {{"Accept", "application/json"}}},
        {"POST", R"({"a":1})", {{"Content-Type", "application/json"}, {"KV-TRACE-ID", "abc"}}},
        {"PUT", "x=1&y=2", {{"Content-Type", "application/x-www-form-urlencoded"}}},
        {"PATCH", "{}", {{"Content-Type", "Application/json"}}},
        {"DELETE", "", {{"X-Trace", "t"}}},
        {"OPTIONS", "", {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.method);
        server.clearReceivedRequests();
        const auto request = http_test::request(c.method, server.baseUrl() + "/echo", c.headers, c.body);
        const auto result = http_test::perform(session, request);
        ASSERT_TRUE(result.has_value()) << result.error().message;
        EXPECT_EQ(result->status, 200);
        EXPECT_EQ(result->headers.get("X-Echo-Method"), c.method);
        EXPECT_EQ(result->body, c.body);
        ASSERT_EQ(server.requestCount(), 1u);
        const auto seen = server.receivedRequests().front();
        EXPECT_EQ(seen.method, c.method);
        EXPECT_EQ(seen.body, c.body);
        for (const auto& [name, value] : c.headers) EXPECT_EQ(seen.header(name), value) << name;
    }
}

TEST_F(CurlSessionTest, NothingIsAddedThatTheCallerDidNotSet) {
    const std::vector<WireCase> cases = {
        {"GET", "", {}},
        {"POST", "", {}},           // curl would add a form content type
        {"POST", "raw bytes", {}},  // ... here too
        {"DELETE", "payload", {}},
        {"PUT", std::string(2 << 20, 'x'), {}},  // large enough for curl's "Expect: 100-continue"
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.method) + " with " + std::to_string(c.body.size()) + " bytes");
        server.clearReceivedRequests();
        const auto result =
            http_test::perform(session, http_test::request(c.method, server.baseUrl() + "/echo", {}, c.body));
        ASSERT_TRUE(result.has_value()) << result.error().message;
        const auto seen = server.receivedRequests().at(0);
        EXPECT_FALSE(seen.header("Content-Type").has_value());
        EXPECT_FALSE(seen.header("Expect").has_value());
        EXPECT_FALSE(seen.header("Accept-Encoding").has_value());
        EXPECT_EQ(seen.body.size(), c.body.size());
        if (c.method != std::string("GET")) {
            EXPECT_EQ(seen.header("Content-Length"), std::to_string(c.body.size())) << "even with no body";
        }
    }
}

TEST_F(CurlSessionTest, HeadAsksForNoBody) {
    server.on("GET", "/thing", [](const LoopbackRequest&) { return respond(200, "not for HEAD"); });
    const auto result = http_test::perform(session, http_test::request("HEAD", server.baseUrl() + "/thing"));
    ASSERT_TRUE(result.has_value()) << result.error().message;
    EXPECT_EQ(result->status, 200);
    EXPECT_EQ(result->body, "");
    EXPECT_EQ(server.receivedRequests().at(0).method, "HEAD");
}

TEST_F(CurlSessionTest, ResponseKeepsRepeatedHeadersStatusAndProgress) {
    server.on("GET", "/cookies", [](const LoopbackRequest&) {
        auto r = respond(207, std::string(10'000, 'b'));
        r.headers.add("Set-Cookie", "a=1");
        r.headers.add("Set-Cookie", "b=2");
        return r;
    });
    auto promise = std::make_shared<std::promise<platform::HttpResult>>();
    auto task = session.dataTask(http_test::get(server.baseUrl() + "/cookies"),
                                 [promise](platform::HttpResult r) { promise->set_value(std::move(r)); });
    const auto progress = task->progress();
    EXPECT_EQ(task->state(), platform::HttpTaskState::suspended);
    task->resume();
    const auto result = promise->get_future().get();
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->status, 207);
    EXPECT_EQ(result->headers.getAll("set-cookie"), (std::vector<std::string>{"a=1", "b=2"}));
    EXPECT_EQ(progress->bytesReceived(), 10'000);
    EXPECT_EQ(progress->totalBytesExpectedToReceive(), 10'000);
    EXPECT_EQ(task->state(), platform::HttpTaskState::completed);
}

TEST_F(CurlSessionTest, RedirectsAreFollowedUpToALimit) {
    server.on("GET", "/loop", [](const LoopbackRequest&) { return respond(302, "", {{"Location", "/loop"}}); });
    const auto looping = http_test::perform(session, http_test::get(server.baseUrl() + "/loop"));
    ASSERT_FALSE(looping.has_value());
    EXPECT_EQ(looping.error().code, HttpErrorCode::tooManyRedirects);
}

// A redirect re-sends the body and every header, the API key included: it is followed only
// within the origin the request was built for.
TEST_F(CurlSessionTest, RedirectsLeaveNoOrigin) {
    LoopbackServer elsewhere;
    elsewhere.on("*", "/echo", echo);
    const std::string port = server.baseUrl().substr(server.baseUrl().rfind(':') + 1);
    struct Case {
        std::string location;
        bool followed;
        const char* why;
    };
    const Case cases[] = {
        {"/echo", true, "a relative path"},
        {server.baseUrl() + "/echo", true, "the same origin spelled out"},
        {elsewhere.baseUrl() + "/echo", false, "another port"},
        {"http://localhost:" + port + "/echo", false, "another host name for the same server"},
        {"https://127.0.0.1:" + port + "/echo", false, "another scheme"},
        {"//localhost:" + port + "/echo", false, "a scheme-relative URL to another host"},
    };
    for (const auto& c : cases) {
        server.on("POST", "/moved", [&](const LoopbackRequest&) {
            return respond(307, "", {{"Location", c.location}});
        });
        server.clearReceivedRequests();
        const auto result = http_test::perform(
            session, http_test::request("POST", server.baseUrl() + "/moved", {{"KV-API-KEY", "k"}}, "4111"));
        EXPECT_EQ(elsewhere.requestCount(), 0u) << c.why;
        if (c.followed) {
            ASSERT_TRUE(result.has_value()) << c.why;
            EXPECT_EQ(result->body, "4111") << c.why;
            EXPECT_EQ(server.requestCount(), 2u) << c.why;
        } else {
            ASSERT_FALSE(result.has_value()) << c.why;
            EXPECT_EQ(result.error().code, HttpErrorCode::redirectRefused) << c.why;
            EXPECT_EQ(server.requestCount(), 1u) << c.why;
        }
    }
}

TEST_F(CurlSessionTest, PathsGoOutAsBuiltWithTheirDotSegments) {
    (void)http_test::perform(session, http_test::get(server.baseUrl() + "/vault/a/../../keys/./x"));
    ASSERT_EQ(server.requestCount(), 1u);
    EXPECT_EQ(server.receivedRequests().at(0).path, "/vault/a/../../keys/./x");
}

TEST_F(CurlSessionTest, EachFailureKindHasItsOwnCode) {
    server.on("GET", "/slow", [](const LoopbackRequest&) { return delayed(10s, respond(200, "late")); });
    server.on("GET", "/cut", [](const LoopbackRequest&) { return cutMidBody(std::string(64 * 1024, 'c')); });
    struct Case {
        const char* why;
        std::string url;
        std::chrono::milliseconds timeout;
        HttpErrorCode expected;
    };
    const std::vector<Case> cases = {
        {"not a URL at all", "not a url", 60s, HttpErrorCode::invalidUrl},
        {"no scheme", "127.0.0.1/echo", 60s, HttpErrorCode::invalidUrl},
        {"scheme other than http(s)", "ftp://127.0.0.1/file", 60s, HttpErrorCode::invalidUrl},
        {"empty", "", 60s, HttpErrorCode::invalidUrl},
        {"port just closed", http_test::closedBaseUrl() + "/", 60s, HttpErrorCode::cannotConnect},
        {"server slower than the time-out", server.baseUrl() + "/slow", 200ms, HttpErrorCode::timedOut},
        {"server closes mid-body", server.baseUrl() + "/cut", 60s, HttpErrorCode::connectionLost},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.why);
        auto request = http_test::get(c.url);
        request.timeout = c.timeout;
        const auto result = http_test::perform(session, request);
        ASSERT_FALSE(result.has_value()) << "status " << result->status;
        EXPECT_EQ(result.error().code, c.expected)
            << platform::toString(result.error().code) << ": " << result.error().message;
        EXPECT_FALSE(result.error().message.empty());
    }
}

TEST_F(CurlSessionTest, CancelDeliversCancelledExactlyOnce) {
    server.on("GET", "/slow", [](const LoopbackRequest&) { return delayed(10s, respond(200)); });
    http_test::Completions completions;
    auto running = session.dataTask(http_test::get(server.baseUrl() + "/slow"), completions.callback(0));
    running->resume();
    running->cancel();
    running->cancel();
    auto neverResumed = session.dataTask(http_test::get(server.baseUrl() + "/echo"), completions.callback(1));
    neverResumed->cancel();
    neverResumed->resume();  // too late: nothing is sent

    auto finished = session.dataTask(http_test::get(server.baseUrl() + "/echo"), completions.callback(2));
    finished->resume();
    ASSERT_TRUE(completions.waitFor(3));
    finished->cancel();  // after completion: no-op

    // A fourth, later completion would show a double delivery.
    ASSERT_TRUE(http_test::perform(session, http_test::get(server.baseUrl() + "/echo")).has_value());
    const auto results = completions.results();
    ASSERT_EQ(results.size(), 3u);
    for (const auto& [slot, result] : results) {
        if (slot == 2) {
            EXPECT_TRUE(result.has_value());
        } else {
            ASSERT_FALSE(result.has_value()) << slot;
            EXPECT_EQ(result.error().code, HttpErrorCode::cancelled);
        }
    }
    EXPECT_EQ(running->state(), platform::HttpTaskState::completed);
}

TEST_F(CurlSessionTest, CancelRacingCompletionStillCompletesOnce) {
    constexpr std::size_t kTasks = 200;
    http_test::Completions completions;
    std::vector<std::shared_ptr<platform::DataTask>> tasks;
    for (std::size_t i = 0; i < kTasks; ++i) {
        tasks.push_back(session.dataTask(http_test::get(server.baseUrl() + "/echo"), completions.callback(i)));
    }
    std::thread canceller([&] {
        for (std::size_t i = 0; i < kTasks; i += 2) tasks[i]->cancel();
    });
    for (auto& task : tasks) task->resume();
    canceller.join();
    ASSERT_TRUE(completions.waitFor(kTasks));
    ASSERT_TRUE(http_test::perform(session, http_test::get(server.baseUrl() + "/echo")).has_value());
    std::vector<int> perTask(kTasks, 0);
    for (const auto& [slot, result] : completions.results()) {
        ++perTask[slot];
        if (slot % 2 == 1) {
            EXPECT_TRUE(result.has_value()) << slot;  // never cancelled
        } else if (!result.has_value()) {
            EXPECT_EQ(result.error().code, HttpErrorCode::cancelled);
        }
    }
    for (std::size_t i = 0; i < kTasks; ++i) EXPECT_EQ(perTask[i], 1) << "task " << i;
}

TEST_F(CurlSessionTest, ManyInFlightAllCompleteWithTheirOwnAnswers) {
    server.on("GET", "/item/*", [](const LoopbackRequest& r) { return respond(200, r.path); });
    constexpr std::size_t kTasks = 300;
    http_test::Completions completions;
    std::vector<std::shared_ptr<platform::DataTask>> tasks;
    for (std::size_t i = 0; i < kTasks; ++i) {
        tasks.push_back(
            session.dataTask(http_test::get(server.baseUrl() + "/item/" + std::to_string(i)), completions.callback(i)));
        if (i > 0) {
            EXPECT_GT(tasks[i]->taskIdentifier(), tasks[i - 1]->taskIdentifier());
        }
    }
    for (auto& task : tasks) task->resume();
    ASSERT_TRUE(completions.waitFor(kTasks));
    for (const auto& [slot, result] : completions.results()) {
        ASSERT_TRUE(result.has_value()) << result.error().message;
        EXPECT_EQ(result->body, "/item/" + std::to_string(slot));
    }
}

TEST_F(CurlSessionTest, CompletionRunsOnDelegateQueueAndMayReenter) {
    // The inner request waits for an answer that comes too late, so the cancel always wins.
    server.on("GET", "/slow", [](const LoopbackRequest&) { return delayed(10s, respond(200)); });
    std::promise<std::pair<bool, platform::HttpResult>> inner;
    auto outer = session.dataTask(http_test::get(server.baseUrl() + "/echo"), [&](platform::HttpResult) {
        const bool onDelegate = session.delegateQueue().isCurrent();
        auto next =
            session.dataTask(http_test::get(server.baseUrl() + "/slow"), [&, onDelegate](platform::HttpResult r) {
                inner.set_value({onDelegate, std::move(r)});
            });
        next->resume();
        next->cancel();  // re-entrant cancel must not deadlock either
    });
    outer->resume();
    auto future = inner.get_future();
    ASSERT_EQ(future.wait_for(http_test::kGenerous), std::future_status::ready);
    auto [onDelegate, result] = future.get();
    EXPECT_TRUE(onDelegate);
    ASSERT_FALSE(result.has_value());
    EXPECT_EQ(result.error().code, HttpErrorCode::cancelled);
}

TEST_F(CurlSessionTest, DestroyingTheSessionCancelsWhatStillRuns) {
    server.on("GET", "/slow", [](const LoopbackRequest&) { return delayed(10s, respond(200)); });
    auto local = std::make_unique<CurlSession>();
    http_test::Completions completions;
    auto task = local->dataTask(http_test::get(server.baseUrl() + "/slow"), completions.callback(0));
    auto unstarted = local->dataTask(http_test::get(server.baseUrl() + "/echo"), completions.callback(1));
    task->resume();
    local.reset();
    ASSERT_EQ(completions.results().size(), 1u);  // delivered before the destructor returned

    unstarted->resume();  // its session is gone: it can only be cancelled
    const auto results = completions.results();
    ASSERT_EQ(results.size(), 2u);
    for (const auto& [slot, result] : results) {
        ASSERT_FALSE(result.has_value()) << slot;
        EXPECT_EQ(result.error().code, HttpErrorCode::cancelled);
    }
}

}  // namespace
