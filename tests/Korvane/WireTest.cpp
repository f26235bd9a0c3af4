// The operations of the tokens and tokenize API over a real socket: statuses, paths and query
// items as the server sees them, the completion form of every row, and hostile servers.

#include <gtest/gtest.h>

#include <chrono>
#include <functional>

#include "Korvane/KorvaneTestSupport.hpp"
#include "Korvane/TokenizeAPI.hpp"
#include "Korvane/TokensAPI.hpp"
#include "Korvane/URLSessionRequestBuilder.hpp"

namespace korvane {
namespace {

using platform::testing::LoopbackRequest;
using testing::answer;
using testing::reply;
using Strings = std::vector<std::string>;

class WireTest : public testing::VaultTest {
protected:
    // Runs a completion-form call and waits for it; answers whether a result and whether an
    // error arrived.
    std::pair<bool, std::optional<ErrorResponse>> complete(
        const std::function<void(std::function<void(bool, std::optional<ErrorResponse>)>)>& call) {
        std::optional<std::pair<bool, std::optional<ErrorResponse>>> outcome;
        call([&](bool resultPresent, std::optional<ErrorResponse> error) { outcome.emplace(resultPresent, error); });
        EXPECT_TRUE(waitFor([&] { return outcome.has_value(); })) << "no completion";
        return outcome.value_or(std::pair{false, std::nullopt});
    }
};

// Adapts a typed completion to the (result present, error) pair of `complete`.
template <class Done>
auto reportTo(Done done) {
    return [done](auto result, std::optional<ErrorResponse> error) { done(result.has_value(), std::move(error)); };
}

// 199 is left to ResponseTest's recorded transport: on a real socket a 1xx status line is an
// interim answer, and the transport keeps waiting for the final one.
TEST_F(WireTest, StatusDecidesForAModelAndForANoResultOperation) {
    struct Row {
        int status;
        std::string body;
        bool modelSucceeds;
        bool noResultSucceeds;
        DecodableRequestBuilderError::Kind failure;
    };
    using Kind = DecodableRequestBuilderError::Kind;
    const Row rows[] = {
        {200, R"({"id":"t"})", true, true, {}},
        {299, R"({"id":"t"})", true, true, {}},
        {300, R"({"id":"t"})", false, false, Kind::unsuccessfulHTTPStatusCode},
        {204, "", false, true, Kind::emptyDataResponse},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.status);
        answer(server, "/tokens/t", row.status, row.body);
        auto model = complete([](auto done) { TokensAPI::getById("t", reportTo(done)); });
        auto none = complete([](auto done) { TokensAPI::delete_("t", reportTo(done)); });
        EXPECT_EQ(model.first, row.modelSucceeds);
        EXPECT_EQ(none.first, row.noResultSucceeds);
        for (const auto* outcome : {&model, &none}) {
            if (outcome->first) {
                EXPECT_FALSE(outcome->second);
                continue;
            }
            ASSERT_TRUE(outcome->second);
            EXPECT_EQ(outcome->second->code, row.status);
            ASSERT_NE(outcome->second->errorAs<DecodableRequestBuilderError>(), nullptr);
            EXPECT_EQ(outcome->second->errorAs<DecodableRequestBuilderError>()->kind(), row.failure);
        }
    }
}

TEST_F(WireTest, PathAndQueryAsTheServerReceivesThem) {
    answer(server, "/tokens*", 200, "{}");
    ASSERT_TRUE(run(TokensAPI::getById.withRequestBuilder("a b/c")).value());
    ASSERT_TRUE(run(TokensAPI::callGet.withRequestBuilder(std::nullopt, Strings{"x", "y"}, std::nullopt, std::nullopt,
                                                          std::nullopt))
                    .value());
    ASSERT_TRUE(
        run(TokensAPI::callGet.withRequestBuilder(std::nullopt, std::nullopt, std::nullopt, std::nullopt, std::nullopt))
            .value());
    const auto sent = server.receivedRequests();
    ASSERT_EQ(sent.size(), 3u);
    EXPECT_EQ(sent[0].path, "/tokens/a b/c") << "the space travelled escaped, the slash as a separator";
    using Items = std::vector<std::pair<std::string, std::string>>;
    EXPECT_EQ(sent[1].query, (Items{{"id", "x"}, {"id", "y"}}));
    EXPECT_EQ(sent[2].path, "/tokens");
    EXPECT_TRUE(sent[2].query.empty());
    EXPECT_EQ(sent[2].rawQuery, "");
}

TEST_F(WireTest, CompletionFormOfEveryOperation) {
    const std::string page = R"({"pagination": {"total_items": 1}, "data": [{"id": "t"}]})";
    server.on("*", "/*", [page](const LoopbackRequest& r) {
        if (r.method == "DELETE" || r.path.ends_with("/children/c")) return reply(204);
        if (r.method == "GET" && r.path != "/tokens/t") return reply(200, page);
        if (r.path == "/tokens/search") return reply(200, page);
        return reply(r.method == "POST" ? 201 : 200, R"({"id": "t"})");
    });
    const CreateTokenRequest create{.type = "card"};
    using Call = std::function<void(std::function<void(bool, std::optional<ErrorResponse>)>)>;
    struct Row {
        const char* operation;
        Call call;
        std::string method;
        std::string path;
        bool sendsBody;
    };
    const Row rows[] = {
        {"tokenize",
         [](auto d) {
             TokenizeAPI::tokenize(anycodable::AnyCodable::map({{"a", 1}}), reportTo(d));
         },
         "POST", "/tokenize", true},
        {"callGet", [](auto d) { TokensAPI::callGet(Strings{"card"}, std::nullopt, std::nullopt, 1, 2, reportTo(d)); },
         "GET", "/tokens", false},
        {"create", [&](auto d) { TokensAPI::create(create, reportTo(d)); }, "POST", "/tokens", true},
        {"createAssociation", [](auto d) { TokensAPI::createAssociation("p", "c", reportTo(d)); }, "POST",
         "/tokens/p/children/c", false},
        {"createChild", [&](auto d) { TokensAPI::createChild("p", create, reportTo(d)); }, "POST", "/tokens/p/children",
         true},
        {"delete", [](auto d) { TokensAPI::delete_("t", reportTo(d)); }, "DELETE", "/tokens/t", false},
        {"deleteAssociation", [](auto d) { TokensAPI::deleteAssociation("p", "c", reportTo(d)); }, "DELETE",
         "/tokens/p/children/c", false},
        {"getById", [](auto d) { TokensAPI::getById("t", reportTo(d)); }, "GET", "/tokens/t", false},
        {"getChildren",
         [&](auto d) {
             TokensAPI::getChildren("p", std::nullopt, std::nullopt, std::nullopt, std::nullopt, 5, queue, reportTo(d));
         },
         "GET", "/tokens/p/children", false},
        {"search", [](auto d) { TokensAPI::search(SearchTokensRequest{.size = 3}, reportTo(d)); }, "POST",
         "/tokens/search", true},
        {"update",
         [](auto d) { TokensAPI::update("t", UpdateTokenRequest{.fingerprintExpression = "x"}, reportTo(d)); }, "PATCH",
         "/tokens/t", true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.operation);
        server.clearReceivedRequests();
        auto [resultPresent, error] = complete(row.call);
        EXPECT_TRUE(resultPresent);
        EXPECT_FALSE(error) << (error ? std::to_string(error->code) + " " + describe(error->error) : "");
        ASSERT_EQ(server.requestCount(), 1u);
        const auto sent = server.receivedRequests().at(0);
        EXPECT_EQ(sent.method, row.method);
        EXPECT_EQ(sent.path, row.path);
        EXPECT_EQ(!sent.body.empty(), row.sendsBody);
        EXPECT_EQ(sent.headers.contains("Content-Type"), row.sendsBody);
    }
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
