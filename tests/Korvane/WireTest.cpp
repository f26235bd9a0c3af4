// Calls over a real socket beyond what the wire table shows: an error through the completion
// form, and servers that are silent, gone or hostile.

#include <gtest/gtest.h>

#include <chrono>

#include "Korvane/KorvaneTestSupport.hpp"
#include "Korvane/ProblemDetails.hpp"
#include "Korvane/TokensAPI.hpp"
#include "Korvane/URLSessionRequestBuilder.hpp"

namespace korvane {
namespace {

using platform::testing::LoopbackRequest;
using testing::answer;
using testing::reply;

class WireTest : public testing::VaultTest {};

TEST_F(WireTest, AnErrorComesWithoutAResultAndItsBodyReadsAsAProblemReport) {
    answer(server, "/tokens/missing", 404, R"({"title":"Not Found","status":404,"traceId":"abc"})");
    std::optional<ErrorResponse> failed;
    bool resultPresent = true;
    TokensAPI::getById("missing", [&](auto response, auto error) {
        resultPresent = response.has_value();
        failed = std::move(error);
    });
    ASSERT_TRUE(waitFor([&] { return failed.has_value(); }));
    EXPECT_FALSE(resultPresent);
    EXPECT_EQ(failed->code, 404);
    auto problem = CodableHelper::decode<ProblemDetails>(*failed->data);
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->status, 404);
    EXPECT_EQ((*problem)["traceId"], anycodable::AnyCodable("abc"));
}

// A builder whose requests give up quickly, so that a silent server costs a fraction of a
// second instead of the minute that real requests wait.
template <class T>
class ImpatientBuilder : public URLSessionDecodableRequestBuilder<T> {
public:
    using URLSessionDecodableRequestBuilder<T>::URLSessionDecodableRequestBuilder;
    std::expected<platform::HttpRequest, UnderlyingError> createURLRequest(platform::HttpSession& session,
                                                                           HTTPMethod method,
                                                                           const ParameterEncoding& encoding,
                                                                           const HeaderMap& headers) override {
        auto request = URLSessionDecodableRequestBuilder<T>::createURLRequest(session, method, encoding, headers);
        if (request) request->timeout = std::chrono::milliseconds(300);
        return request;
    }
};

TEST_F(WireTest, ServerThatNeverAnswersEndsInMinusOneAfterTheTimeout) {
    auto standard = builder<Token>("GET", "/silent");
    auto encoding = internal::encodingOrStop(HTTPMethod::get, {}, {});
    auto request = std::static_pointer_cast<URLSessionRequestBuilder<Token>>(standard)->createURLRequest(
        internal::vaultSession(), HTTPMethod::get, *encoding, standard->headers);
    ASSERT_TRUE(request);
    EXPECT_EQ(request->timeout, std::chrono::seconds(60));

    server.on("GET", "/silent", [](const LoopbackRequest&) {
        return platform::testing::delayed(std::chrono::hours(1), reply(200, "{}"));
    });
    auto impatient = std::make_shared<ImpatientBuilder<Token>>(
        RequestBuilderArgs{"GET", server.baseUrl() + "/silent", std::nullopt, {}, true});
    auto result = run(impatient);
    ASSERT_TRUE(result && !*result);
    EXPECT_EQ(result->error().code, -1);
    ASSERT_NE(result->error().errorAs<platform::HttpError>(), nullptr);
    EXPECT_EQ(result->error().errorAs<platform::HttpError>()->code, platform::HttpErrorCode::timedOut);
}

TEST_F(WireTest, ServerThatIsGoneEndsInMinusOne) {
    std::string gone;
    {
        platform::testing::LoopbackServer closed;
        gone = closed.baseUrl();
    }
    KorvaneAPI::setBasePath(gone);
    auto result = run(TokensAPI::getById.withRequestBuilder("t"));
    ASSERT_TRUE(result && !*result);
    EXPECT_EQ(result->error().code, -1);
    ASSERT_NE(result->error().errorAs<platform::HttpError>(), nullptr);
    EXPECT_EQ(result->error().errorAs<platform::HttpError>()->code, platform::HttpErrorCode::cannotConnect);
}

// Each body goes to a model and to AnyCodable; the 50 MB one only to the model, as moving it
// over loopback takes seconds.
TEST_F(WireTest, HostileBodiesBecomeDecodeErrorsAndTheProcessSurvives) {
    struct Row {
        const char* why;
        std::string body;
        bool alsoAsAny = true;
    };
    const Row rows[] = {
        {"50 MB of opening brackets", std::string(50 * 1024 * 1024, '['), false},
        {"nested 10,000 levels", std::string(10000, '[') + std::string(10000, ']')},
        {"invalid UTF-8 in a key", "{\"\xF0\x28\x8C\x28\": 1}"},
        {"truncated", R"({"id": "t", "data": {"number": "42)"},
        {"number beyond double", R"({"data": 1e400})"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.why);
        answer(server, "/tokens/t", 200, row.body);
        std::vector<ErrorResponse> errors;
        auto token = run(TokensAPI::getById.withRequestBuilder("t"));
        ASSERT_TRUE(token && !*token);
        errors.push_back(token->error());
        if (row.alsoAsAny) {
            auto any = run(builder<anycodable::AnyCodable>("GET", "/tokens/t"));
            ASSERT_TRUE(any && !*any);
            errors.push_back(any->error());
        }
        for (const ErrorResponse& error : errors) {
            EXPECT_EQ(error.code, 200);
            EXPECT_EQ(error.data.value_or("").size(), row.body.size()) << "the body is handed back raw";
            EXPECT_NE(error.errorAs<anycodable::DecodingError>(), nullptr) << describe(error.error);
        }
    }
}

}  // namespace
}  // namespace korvane
