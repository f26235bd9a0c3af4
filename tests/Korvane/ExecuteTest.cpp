// Execution over the real session against a loopback vault: what goes on the wire and which
// result or error value comes back.

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <fstream>

#include "Korvane/KorvaneTestSupport.hpp"
#include "Korvane/Token.hpp"
#include "Korvane/TokensAPI.hpp"
#include "Korvane/internal/Execution.hpp"

namespace korvane {
namespace {

using platform::testing::LoopbackRequest;
using platform::testing::LoopbackResponse;
using testing::answer;
using testing::reply;

class ExecuteTest : public testing::VaultTest {};

TEST_F(ExecuteTest, CustomHeaderWinsAtConstructionAndAgainAtSendTime) {
    answer(server, "/h", 200);
    KorvaneAPI::setCustomHeaders({{"X-Shared", "custom"}});
    auto b = builder<Void>("GET", "/h", {{"X-Shared", "constructor"}, {"X-Own", "own"}});
    EXPECT_EQ(b->headers.at("X-Shared"), "custom");
    b->headers["X-Shared"] = "changed later";
    ASSERT_TRUE(run(b).value());
    const auto sent = server.receivedRequests().at(0);
    EXPECT_EQ(sent.header("X-Shared"), "custom");
    EXPECT_EQ(sent.header("X-Own"), "own");
}

TEST_F(ExecuteTest, AddHeaderWithEmptyValueNeitherAddsNorDeletes) {
    answer(server, "/h", 200);
    auto b = builder<Void>("GET", "/h");
    b->addHeader("KV-API-KEY", "key-1").addHeader("KV-API-KEY", "").addHeader("KV-TRACE-ID", "");
    ASSERT_TRUE(run(b).value());
    const auto sent = server.receivedRequests().at(0);
    EXPECT_EQ(sent.header("KV-API-KEY"), "key-1");
    EXPECT_FALSE(sent.headers.contains("KV-TRACE-ID"));
}

TEST_F(ExecuteTest, ContentTypeWithCharsetIsMerelySentOnGet) {
    answer(server, "/g", 200);
    ASSERT_TRUE(run(builder<Void>("GET", "/g", {{"Content-Type", "application/json; charset=utf-8"}})).value());
    EXPECT_EQ(server.receivedRequests().at(0).header("Content-Type"), "application/json; charset=utf-8");
}

TEST_F(ExecuteTest, FormUrlEncodedBodyWhenAskedForByContentType) {
    answer(server, "/f", 200);
    Parameters parameters;
    parameters.set("name", "a b");
    ASSERT_TRUE(
        run(builder<Void>("PUT", "/f", {{"Content-Type", "application/x-www-form-urlencoded"}}, parameters)).value());
    const auto sent = server.receivedRequests().at(0);
    EXPECT_EQ(sent.header("Content-Type"), "application/x-www-form-urlencoded");
    EXPECT_EQ(sent.body, "name=a b");
}

TEST_F(ExecuteTest, UnbuildableUrlFailsWith415OnTheQueueNotAtExecute) {
    auto made = [](std::string url) {
        return std::make_shared<URLSessionDecodableRequestBuilder<Token>>(
            RequestBuilderArgs{"GET", std::move(url), std::nullopt, {}, true});
    };
    struct Case {
        std::shared_ptr<RequestBuilder<Token>> builder;
        const char* why;
    };
    const Case cases[] = {
        {made("http://bad host/x"), "a space in the host"},
        {made("http://[::1"), "an unclosed IPv6 bracket"},
        {made(server.baseUrl() + "/tokens/%2E%2e/x"), "an encoded dot segment"},
        {TokensAPI::getById.withRequestBuilder("a/../../applications/key"), "a path parameter climbing out"},
        {TokensAPI::getById.withRequestBuilder("."), "a path parameter that is a dot"},
    };
    for (const auto& c : cases) {
        std::optional<RequestBuilder<Token>::Result> result;
        c.builder->execute([&](auto r) { result.emplace(std::move(r)); });
        EXPECT_FALSE(result.has_value()) << c.why << ": delivered synchronously";
        queue->runUntilIdle();
        ASSERT_TRUE(result.has_value()) << c.why;
        ASSERT_FALSE(*result) << c.why;
        EXPECT_EQ(result->error().code, 415) << c.why;
        EXPECT_FALSE(result->error().data);
        EXPECT_FALSE(result->error().response);
        ASSERT_NE(result->error().errorAs<DownloadException>(), nullptr) << c.why;
        EXPECT_EQ(*result->error().errorAs<DownloadException>(), DownloadException::requestMissingURL);
    }
    EXPECT_EQ(server.requestCount(), 0u);
}

TEST_F(ExecuteTest, CancellingGivesMinusOneWithTheCancelledError) {
    server.on("GET", "/slow", [](const LoopbackRequest&) {
        auto r = reply(200);
        r.delay = std::chrono::seconds(5);
        return r;
    });
    auto b = builder<Token>("GET", "/slow");
    std::optional<RequestBuilder<Token>::Result> result;
    auto task = b->execute([&](auto r) { result.emplace(std::move(r)); });
    ASSERT_TRUE(waitFor([&] { return server.requestCount() == 1; }));
    task->cancel();
    task->cancel();  // a second cancel does nothing
    ASSERT_TRUE(waitFor([&] { return result.has_value(); }));
    ASSERT_FALSE(*result);
    EXPECT_EQ(result->error().code, -1);
    ASSERT_NE(result->error().errorAs<platform::HttpError>(), nullptr);
    EXPECT_EQ(result->error().errorAs<platform::HttpError>()->code, platform::HttpErrorCode::cancelled);
}

TEST_F(ExecuteTest, RetryHookRetriesTwiceThenSucceedsWithOneCompletion) {
    std::atomic<int> calls{0};
    server.on("GET", "/flaky",
              [&](const LoopbackRequest&) { return ++calls < 3 ? reply(503) : reply(200, R"({"id":"t1"})"); });
    auto b = std::static_pointer_cast<URLSessionRequestBuilder<Token>>(builder<Token>("GET", "/flaky"));
    std::atomic<int> asked{0};
    b->taskCompletionShouldRetry = [&](const auto&, const std::optional<platform::HttpResponse>& response, const auto&,
                                       std::function<void(bool)> decide) {
        ++asked;
        decide(response && response->status == 503);
    };
    int completions = 0;
    std::optional<RequestBuilder<Token>::Result> result;
    b->execute([&](auto r) {
        ++completions;
        result.emplace(std::move(r));
    });
    ASSERT_TRUE(waitFor([&] { return result.has_value(); }));
    ASSERT_TRUE(*result);
    EXPECT_EQ((*result)->body.id, "t1");
    EXPECT_EQ(calls.load(), 3);
    EXPECT_EQ(asked.load(), 3);
    queue->runUntilIdle();
    EXPECT_EQ(completions, 1);
}

TEST_F(ExecuteTest, CompletionRunsOnTheQueueGivenToExecute) {
    answer(server, "/q", 200);
    auto other = std::make_shared<platform::ManualMainQueue>();
    bool done = false;
    builder<Void>("GET", "/q")->execute(other, [&](auto) { done = true; });
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!done && std::chrono::steady_clock::now() < deadline) {
        queue->runUntilIdle();
        EXPECT_FALSE(done) << "ran on the default queue";
        other->runUntilIdle();
    }
    EXPECT_TRUE(done);
}

TEST_F(ExecuteTest, ProgressIsToldOnceAndTracksTheBody) {
    answer(server, "/bytes", 200, std::string(1000, 'x'));
    auto b = builder<std::string>("GET", "/bytes");
    std::shared_ptr<const platform::HttpProgress> progress;
    int told = 0;
    b->onProgressReady = [&](std::shared_ptr<const platform::HttpProgress> p) {
        ++told;
        progress = std::move(p);
    };
    auto result = run(b);
    ASSERT_TRUE(result && *result);
    EXPECT_EQ(told, 1);
    ASSERT_TRUE(progress);
    EXPECT_EQ(progress->bytesReceived(), 1000);
}

TEST_F(ExecuteTest, FiftyMegabyteBodyIsDelivered) {
    answer(server, "/big", 200, std::string(50 * 1024 * 1024, 'a'));
    auto result = run(builder<std::string>("GET", "/big"));
    ASSERT_TRUE(result && *result);
    EXPECT_EQ((*result)->body.size(), 50u * 1024 * 1024);
}

// Server side of basic authentication: 200 for the right pair, else a challenge.
void requireBasicAuth(platform::testing::LoopbackServer& server, const std::string& path) {
    server.on("GET", path, [](const LoopbackRequest& r) {
        if (r.header("Authorization") == "Basic dXNlcjpzZWNyZXQ=") return reply(200, "ok");
        return reply(401, "", {{"WWW-Authenticate", R"(Basic realm="vault")"}});
    });
}

TEST_F(ExecuteTest, ChallengesAreAnsweredByTheBuildersHandlerThenItsCredentialAndTheStoresEmptied) {
    requireBasicAuth(server, "/auth");
    struct Case {
        std::optional<platform::HttpCredential> credential;
        bool handler;
        int code;  // 0: success
        const char* why;
    };
    const Case cases[] = {
        {platform::HttpCredential{"user", "secret"}, false, 0, "the credential answers"},
        {std::nullopt, false, 401, "nothing answers: the 401 comes back"},
        {platform::HttpCredential{"user", "wrong"}, true, 0, "the handler is asked before the credential"},
    };
    for (const auto& c : cases) {
        auto b = std::static_pointer_cast<URLSessionRequestBuilder<std::string>>(builder<std::string>("GET", "/auth"));
        b->credential = c.credential;
        if (c.handler) {
            b->taskDidReceiveChallenge = [](const platform::AuthChallenge& challenge) {
                EXPECT_EQ(challenge.protectionSpace.realm, "vault");
                return platform::ChallengeAnswer{platform::ChallengeDisposition::useCredential,
                                                 platform::HttpCredential{"user", "secret"}};
            };
        }
        auto result = run(b);
        ASSERT_TRUE(result) << c.why;
        EXPECT_EQ(*result ? 0 : result->error().code, c.code) << c.why;
        if (*result) {
            EXPECT_EQ((*result)->body, "ok") << c.why;
        }
        queue->runUntilIdle();
        EXPECT_EQ(internal::credentialStore().size(), 0u) << c.why;
        EXPECT_EQ(internal::challengeHandlerStore().size(), 0u) << c.why;
    }
}

class DownloadTest : public testing::VaultTest {
protected:
    void SetUp() override {
        VaultTest::SetUp();
        useFreshCaches();
    }
    std::optional<RequestBuilder<platform::Url>::Result> download(const std::string& disposition) {
        platform::HttpHeaders headers;
        if (!disposition.empty()) headers.set("Content-Disposition", disposition);
        answer(server, "/files/report", 200, "file-bytes", headers);
        return run(builder<platform::Url>("GET", "/files/report"));
    }
    static std::string contents(const std::filesystem::path& path) {
        std::ifstream in(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
};

TEST_F(DownloadTest, QuotedFileNameIsStoredBelowTheRequestPath) {
    auto result = download(R"(attachment; filename="statement 2024.pdf")");
    ASSERT_TRUE(result && *result);
    const auto expected = caches / "files/report/statement 2024.pdf";
    EXPECT_EQ(contents(expected), "file-bytes");
    EXPECT_EQ((*result)->body, platform::Url::fileUrl(expected));
}

TEST_F(DownloadTest, NamesThatCouldLeaveTheDirectoryAreReplaced) {
    for (std::string disposition : {R"(attachment; filename="../../escape.txt")", "attachment; filename=a/b",
                                    "attachment; filename=..", R"(attachment; filename="  ")", "inline"}) {
        SCOPED_TRACE(disposition);
        auto result = download(disposition);
        ASSERT_TRUE(result && *result);
        const std::filesystem::path stored = (*result)->body.path();
        EXPECT_EQ(stored.parent_path(), caches / "files/report");
        EXPECT_TRUE(stored.filename().string().starts_with("tmp.Korvane.")) << stored;
        EXPECT_EQ(contents(stored), "file-bytes");
    }
    EXPECT_FALSE(std::filesystem::exists(caches.parent_path() / "escape.txt"));
}

TEST_F(DownloadTest, UnwritableCachesDirectoryFailsWith400) {
    std::ofstream(caches.string() + "-file") << "x";
    platform::setCachesDirectory(caches.string() + "-file");  // a file, not a directory
    auto result = download("attachment; filename=x.txt");
    std::filesystem::remove(caches.string() + "-file");
    ASSERT_TRUE(result && !*result);
    EXPECT_EQ(result->error().code, 400);
    EXPECT_EQ(result->error().data, "file-bytes");
}

}  // namespace
}  // namespace korvane
