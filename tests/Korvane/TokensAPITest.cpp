// The tokens API: what each row builds, what goes on the wire, and how the models map to JSON.

#include <gtest/gtest.h>

#include "Korvane/CodableHelper.hpp"
#include "Korvane/KorvaneTestSupport.hpp"
#include "Korvane/ProblemDetails.hpp"
#include "Korvane/TokensAPI.hpp"
#include "Korvane/ValidationProblemDetails.hpp"

namespace korvane {
namespace {

using platform::testing::LoopbackRequest;
using platform::testing::LoopbackResponse;
using testing::answer;
using testing::reply;
using Strings = std::vector<std::string>;

class TokensAPITest : public testing::VaultTest {};

TEST_F(TokensAPITest, RowsBuildMethodAndUrlWithoutSending) {
    const std::string base = server.baseUrl();
    struct Row {
        const char* why;
        std::shared_ptr<RequestBuilderBase> builder;
        std::string method;
        std::string url;
    };
    const Row rows[] = {
        {"space escaped, slash kept", TokensAPI::getById.withRequestBuilder("a b/c"), "GET", base + "/tokens/a%20b/c"},
        {"no query parameters, no '?'",
         TokensAPI::callGet.withRequestBuilder(std::nullopt, std::nullopt, std::nullopt, std::nullopt, std::nullopt),
         "GET", base + "/tokens"},
        {"exploded ids", TokensAPI::callGet.withRequestBuilder(std::nullopt, Strings{"x", "y"}, std::nullopt, 2, 50),
         "GET", base + "/tokens?id=x&id=y&page=2&size=50"},
        {"empty array gives no item",
         TokensAPI::callGet.withRequestBuilder(Strings{}, std::nullopt, std::nullopt, std::nullopt, std::nullopt),
         "GET", base + "/tokens"},
        {"association", TokensAPI::createAssociation.withRequestBuilder("p", "c"), "POST",
         base + "/tokens/p/children/c"},
        {"association removal", TokensAPI::deleteAssociation.withRequestBuilder("p", "c"), "DELETE",
         base + "/tokens/p/children/c"},
        {"delete", TokensAPI::delete_.withRequestBuilder("t1"), "DELETE", base + "/tokens/t1"},
        {"children",
         TokensAPI::getChildren.withRequestBuilder("p", Strings{"card"}, std::nullopt, std::nullopt, std::nullopt,
                                                   std::nullopt),
         "GET", base + "/tokens/p/children?type=card"},
        {"update", TokensAPI::update.withRequestBuilder("t1", UpdateTokenRequest{}), "PATCH", base + "/tokens/t1"},
        {"search", TokensAPI::search.withRequestBuilder(SearchTokensRequest{.query = "q"}), "POST",
         base + "/tokens/search"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(row.builder->method(), row.method);
        EXPECT_EQ(row.builder->URLString(), row.url);
        EXPECT_TRUE(row.builder->requiresAuthentication());
        EXPECT_TRUE(row.builder->headers.empty());
    }
    EXPECT_EQ(server.requestCount(), 0u);
}

TEST_F(TokensAPITest, MetadataIsOneItemInTheDictionaryPrintedForm) {
    answer(server, "/tokens", 200, "{}");
    auto b = TokensAPI::callGet.withRequestBuilder(
        std::nullopt, std::nullopt, std::map<std::string, std::string>{{"key", "value"}}, std::nullopt, std::nullopt);
    ASSERT_TRUE(run(b).value());
    const auto query = server.receivedRequests().at(0).query;
    ASSERT_EQ(query.size(), 1u);
    EXPECT_EQ(query[0].first, "metadata");
    EXPECT_EQ(query[0].second, R"([AnyHashable("key"): "value"])");
}

TEST_F(TokensAPITest, CreateWritesDataAsNullAndNoOtherAbsentField) {
    server.on("POST", "/tokens", [](const LoopbackRequest&) { return reply(201, R"({"id":"t9"})"); });
    std::optional<CreateTokenResponse> created;
    std::optional<ErrorResponse> failed;
    TokensAPI::create(CreateTokenRequest{.type = "card"}, [&](auto response, auto error) {
        created = std::move(response);
        failed = std::move(error);
    });
    ASSERT_TRUE(waitFor([&] { return created || failed; }));
    ASSERT_TRUE(created);
    EXPECT_EQ(created->id, "t9");
    const auto sent = server.receivedRequests().at(0);
    EXPECT_EQ(sent.header("Content-Type"), "application/json");
    EXPECT_EQ(sent.body, "{\n  \"type\" : \"card\",\n  \"data\" : null\n}") << "pretty-printed, field order";
}

TEST_F(TokensAPITest, GetByIdDecodesEveryFieldAndDropsUnknownKeys) {
    const std::string json = R"({
        "id": "t1", "type": "card", "tenant_id": "e621e1f8-c36c-495a-93fc-0c247a3e6e5f",
        "data": {"number": "4242"}, "metadata": {"k": "v"},
        "encryption": {"cek": {"key": "k1", "alg": "AES"}, "kek": {"key": "k2", "prov": "aws"}},
        "created_by": "E621E1F8-C36C-495A-93FC-0C247A3E6E5F", "created_at": "2024-01-15T12:00:00.000Z",
        "modified_at": "2024-01-15T14:00:00+02:00", "fingerprint": "f", "fingerprint_expression": "{{ data }}",
        "mask": "****", "privacy": {"classification": "pci", "impact_level": "high", "restriction_policy": "mask"},
        "search_indexes": ["a"], "expires_at": "2025-01-01", "containers": ["/pci/"], "aliases": ["x"],
        "unknown_key": [1, 2, 3]})";
    answer(server, "/tokens/t1", 200, json);
    std::optional<Token> token;
    TokensAPI::getById("t1", [&](auto response, auto error) {
        EXPECT_FALSE(error);
        token = std::move(response);
    });
    ASSERT_TRUE(waitFor([&] { return token.has_value(); }));
    EXPECT_EQ(token->tenantId->string(), "E621E1F8-C36C-495A-93FC-0C247A3E6E5F");
    EXPECT_EQ(token->createdBy, token->tenantId);
    EXPECT_EQ(token->encryption->kek->prov, "aws");
    EXPECT_EQ(token->privacy->impactLevel, "high");
    EXPECT_EQ(token->modifiedAt, *token->createdAt) << "+02:00 read through the second format";
    EXPECT_EQ(token->mask, anycodable::AnyCodable("****"));
    EXPECT_EQ(token->aliases, Strings{"x"});
    EXPECT_TRUE(token->expiresAt) << "a bare date is read as midnight";
    const auto sent = server.receivedRequests().at(0);
    EXPECT_TRUE(sent.body.empty());
    EXPECT_FALSE(sent.headers.contains("Content-Type"));
}

TEST_F(TokensAPITest, CompletionFormDeliversTheErrorWithoutAResult) {
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

TEST_F(TokensAPITest, NoResultOperationAcceptsAny2xxAndAnyBody) {
    answer(server, "/tokens/t1", 202, "not json at all");
    std::optional<Void> done;
    TokensAPI::delete_("t1", [&](auto response, auto error) {
        EXPECT_FALSE(error);
        done = response;
    });
    ASSERT_TRUE(waitFor([&] { return done.has_value(); }));
    EXPECT_EQ(server.receivedRequests().at(0).method, "DELETE");
}

TEST_F(TokensAPITest, UpdateSendsOnlyPresentFields) {
    answer(server, "/tokens/t1", 200, R"({"id":"t1"})");
    UpdateTokenRequest update{.privacy = UpdatePrivacy{.impactLevel = "low"}, .deduplicateToken = false};
    auto result = run(TokensAPI::update.withRequestBuilder("t1", update));
    ASSERT_TRUE(result && *result);
    auto sent = CodableHelper::decode<anycodable::AnyCodable>(server.receivedRequests().at(0).body);
    ASSERT_TRUE(sent);
    EXPECT_EQ(*sent, anycodable::AnyCodable::map(
                         {{"privacy", anycodable::Map{{"impact_level", "low"}}}, {"deduplicate_token", false}}));
}

TEST(TokenModels, EncodeThenDecodeGivesTheSameValueAndHash) {
    Token token{.id = "t",
                .tenantId = platform::Uuid::random(),
                .data = anycodable::AnyCodable::map({{"n", 1}}),
                .metadata = std::map<std::string, std::string>{{"a", "b"}},
                .encryption = EncryptionMetadata{.cek = EncryptionKey{.key = "k"}},
                .createdAt = Date(std::chrono::milliseconds(1'705'320'000'123)),
                .searchIndexes = Strings{"i"}};
    auto json = CodableHelper::encode(token);
    ASSERT_TRUE(json);
    auto back = CodableHelper::decode<Token>(*json);
    ASSERT_TRUE(back) << back.error().description();
    EXPECT_EQ(*back, token);
    EXPECT_EQ(std::hash<Token>{}(*back), std::hash<Token>{}(token));
    EXPECT_NE(json->find("\"created_at\" : \"2024-01-15T12:00:00.123Z\""), std::string::npos) << *json;
}

TEST(TokenModels, ProblemDetailsKeepOpenContentAfterTheNamedFields) {
    ValidationProblemDetails problem;
    problem.errors = std::map<std::string, Strings>{{"data", {"required"}}};
    problem.status = 400;
    problem.set("traceId", anycodable::AnyCodable("abc"));
    problem.set("gone", anycodable::AnyCodable(1));
    problem.set("gone", std::nullopt);
    auto json = CodableHelper::jsonEncoder()->encode(problem);
    ASSERT_TRUE(json);
    EXPECT_LT(json->find("\"status\""), json->find("\"traceId\""));
    EXPECT_EQ(json->find("gone"), std::string::npos);
    auto back = CodableHelper::decode<ValidationProblemDetails>(*json);
    ASSERT_TRUE(back);
    EXPECT_EQ(*back, problem);
}

}  // namespace
}  // namespace korvane
