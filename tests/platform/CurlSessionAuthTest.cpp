#include "platform/CurlSession.hpp"

#include "platform/Base64.hpp"
#include "platform/HttpTestSupport.hpp"
#include "platform/LoopbackServer.hpp"

#include <gtest/gtest.h>

#include <mutex>

namespace {

using platform::AuthChallenge;
using platform::ChallengeAnswer;
using platform::ChallengeDisposition;
using platform::CurlSession;
using platform::HttpAuthScheme;
using platform::HttpCredential;
using platform::HttpErrorCode;
using platform::testing::cutMidBody;
using platform::testing::delayed;
using platform::testing::LoopbackRequest;
using platform::testing::LoopbackResponse;
using platform::testing::LoopbackServer;
using platform::testing::respond;

const HttpCredential kGood{"user", "secret"};
const HttpCredential kWrong{"user", "guess"};

// A server that wants Basic credentials `kGood` on /private.
class CurlSessionAuthTest : public ::testing::Test {
protected:
    void SetUp() override {
        server.on("GET", "/private", [](const LoopbackRequest& r) {
            if (r.header("Authorization") == "Basic " + platform::base64Encode(kGood.user + ":" + kGood.password)) {
                return respond(200, "welcome");
            }
            return respond(401, "no", {{"WWW-Authenticate", R"(Basic realm="vault")"}});
        });
        session.setChallengeHandler([this](const AuthChallenge& challenge) {
            std::lock_guard lock(mutex);
            seen.push_back(challenge);
            return script(challenge);
        });
    }

    std::vector<AuthChallenge> challenges() {
        std::lock_guard lock(mutex);
        return seen;
    }

    LoopbackServer server;
    CurlSession session;
    std::function<ChallengeAnswer(const AuthChallenge&)> script;
    std::mutex mutex;
    std::vector<AuthChallenge> seen;
};

TEST_F(CurlSessionAuthTest, CredentialFromTheHandlerIsSentAndAccepted) {
    script = [](const AuthChallenge&) { return ChallengeAnswer{ChallengeDisposition::useCredential, kGood}; };
    auto task = session.dataTask(http_test::get(server.baseUrl() + "/private"), nullptr);
    const auto id = task->taskIdentifier();
    const auto result = http_test::perform(session, http_test::get(server.baseUrl() + "/private"));
    ASSERT_TRUE(result.has_value()) << result.error().message;
    EXPECT_EQ(result->status, 200);
    EXPECT_EQ(result->body, "welcome");

    const auto asked = challenges();
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(asked[0].taskIdentifier, id + 1);
    EXPECT_EQ(asked[0].previousFailureCount, 0);
    EXPECT_EQ(asked[0].protectionSpace,
              (platform::ProtectionSpace{"127.0.0.1", server.port(), "vault", HttpAuthScheme::basic}));
    const auto requests = server.receivedRequests();
    ASSERT_EQ(requests.size(), 2u);
    EXPECT_FALSE(requests[0].header("Authorization").has_value());  // nothing is sent before the challenge
}

TEST_F(CurlSessionAuthTest, RefusedCredentialIsAskedAgainWithFailureCount) {
    script = [](const AuthChallenge& c) {
        return c.previousFailureCount == 0 ? ChallengeAnswer{ChallengeDisposition::useCredential, kWrong}
                                           : ChallengeAnswer{ChallengeDisposition::rejectProtectionSpace, {}};
    };
    const auto result = http_test::perform(session, http_test::get(server.baseUrl() + "/private"));
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->status, 401);  // delivered as it is
    EXPECT_EQ(result->body, "no");
    const auto asked = challenges();
    ASSERT_EQ(asked.size(), 2u);
    EXPECT_EQ(asked[0].previousFailureCount, 0);
    EXPECT_EQ(asked[1].previousFailureCount, 1);
}

TEST_F(CurlSessionAuthTest, DispositionsOtherThanUseCredential) {
    struct Case {
        ChallengeDisposition disposition;
        std::optional<HttpCredential> requestCredential;
        int expectedStatus;  // 0: cancelled
        std::size_t expectedRequests;
    };
    const std::vector<Case> cases = {
        {ChallengeDisposition::cancel, kGood, 0, 1},
        {ChallengeDisposition::rejectProtectionSpace, kGood, 401, 1},
        {ChallengeDisposition::performDefaultHandling, kGood, 200, 2},  // the request's own credential
        {ChallengeDisposition::performDefaultHandling, std::nullopt, 401, 1},
        {ChallengeDisposition::performDefaultHandling, kWrong, 401, 2},  // offered once only
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.disposition));
        server.clearReceivedRequests();
        script = [&](const AuthChallenge&) { return ChallengeAnswer{c.disposition, {}}; };
        auto request = http_test::get(server.baseUrl() + "/private");
        request.credential = c.requestCredential;
        const auto result = http_test::perform(session, request);
        if (c.expectedStatus == 0) {
            ASSERT_FALSE(result.has_value());
            EXPECT_EQ(result.error().code, HttpErrorCode::cancelled);
        } else {
            ASSERT_TRUE(result.has_value()) << result.error().message;
            EXPECT_EQ(result->status, c.expectedStatus);
        }
        EXPECT_EQ(server.requestCount(), c.expectedRequests);
    }
}

TEST_F(CurlSessionAuthTest, WithoutHandlerTheRequestCredentialIsUsed) {
    CurlSession plain;
    auto request = http_test::get(server.baseUrl() + "/private");
    request.credential = kGood;
    const auto result = http_test::perform(plain, request);
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->status, 200);
}

TEST_F(CurlSessionAuthTest, ChallengeHeadersAreReadWhateverTheirShape) {
    struct Case {
        const char* why;
        std::vector<std::string> fields;
        std::optional<platform::ProtectionSpace> expected;  // absent: the handler is not asked
    };
    const std::vector<Case> cases = {
        {"quoted realm",
         {R"(Basic realm="simple")"},
         platform::ProtectionSpace{"", 0, "simple", HttpAuthScheme::basic}},
        {"scheme in lower case, token realm",
         {"basic realm=plain"},
         platform::ProtectionSpace{"", 0, "plain", HttpAuthScheme::basic}},
        {"digest with more parameters",
         {R"(Digest realm="d@host", qop="auth", nonce="abc")"},
         platform::ProtectionSpace{"", 0, "d@host", HttpAuthScheme::digest}},
        {"digest preferred over basic",
         {R"(Basic realm="b")", R"(Digest realm="d", nonce="n")"},
         platform::ProtectionSpace{"", 0, "d", HttpAuthScheme::digest}},
        {"unknown scheme first in one field",
         {R"(Newauth realm="apps", type=1, Basic realm="simple")"},
         platform::ProtectionSpace{"", 0, "simple", HttpAuthScheme::basic}},
        {"escaped quote in realm",
         {R"(Basic realm="a \"b\"")"},
         platform::ProtectionSpace{"", 0, R"(a "b")", HttpAuthScheme::basic}},
        {"only schemes the session cannot answer", {R"(Bearer realm="api")"}, std::nullopt},
    };
    script = [](const AuthChallenge&) { return ChallengeAnswer{ChallengeDisposition::rejectProtectionSpace, {}}; };
    for (std::size_t i = 0; i < cases.size(); ++i) {
        const auto& c = cases[i];
        SCOPED_TRACE(c.why);
        const auto path = "/challenge/" + std::to_string(i);
        server.on("GET", path, [fields = c.fields](const LoopbackRequest&) {
            auto r = respond(401);
            for (const auto& f : fields) r.headers.add("WWW-Authenticate", f);
            return r;
        });
        const auto before = challenges().size();
        const auto result = http_test::perform(session, http_test::get(server.baseUrl() + path));
        ASSERT_TRUE(result.has_value());
        EXPECT_EQ(result->status, 401);
        const auto asked = challenges();
        if (!c.expected) {
            EXPECT_EQ(asked.size(), before);
            continue;
        }
        ASSERT_EQ(asked.size(), before + 1);
        EXPECT_EQ(asked.back().protectionSpace.realm, c.expected->realm);
        EXPECT_EQ(asked.back().protectionSpace.scheme, c.expected->scheme);
    }
}

}  // namespace
