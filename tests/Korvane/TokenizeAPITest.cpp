// Tokenize: a body of any shape out, any JSON back.

#include <gtest/gtest.h>

#include "Korvane/KorvaneTestSupport.hpp"
#include "Korvane/TokenizeAPI.hpp"

namespace korvane {
namespace {

using anycodable::AnyCodable;
using testing::answer;

class TokenizeAPITest : public testing::VaultTest {};

TEST_F(TokenizeAPITest, SendsTheBodyAsPrettyJsonWithCallerHeadersAndReadsAnyJson) {
    answer(server, "/tokenize", 201, R"({"card": {"id": "t1", "type": "card"}})");
    auto b = TokenizeAPI::tokenize.withRequestBuilder(AnyCodable::map(
        {{"card", anycodable::Map{{"type", "card"}, {"data", anycodable::Map{{"number", "4242424242424242"}}}}}}));
    b->addHeader("KV-API-KEY", "key").addHeader("KV-TRACE-ID", "trace");
    auto result = run(b);
    ASSERT_TRUE(result && *result);
    EXPECT_EQ((*result)->statusCode, 201);
    EXPECT_EQ((*result)->body, AnyCodable::map({{"card", anycodable::Map{{"id", "t1"}, {"type", "card"}}}}));
    const auto sent = server.receivedRequests().at(0);
    EXPECT_EQ(sent.method, "POST");
    EXPECT_EQ(sent.header("Content-Type"), "application/json");
    EXPECT_EQ(sent.header("KV-API-KEY"), "key");
    EXPECT_EQ(sent.header("KV-TRACE-ID"), "trace");
    EXPECT_EQ(sent.body,
              "{\n  \"card\" : {\n    \"type\" : \"card\",\n    \"data\" : {\n      \"number\" : \"4242424242424242\"\n"
              "    }\n  }\n}");
}

TEST_F(TokenizeAPITest, AbsentBodyGoesOutWithoutBodyOrContentType) {
    answer(server, "/tokenize", 200, "[1, \"a\"]");
    auto result = run(TokenizeAPI::tokenize.withRequestBuilder(std::nullopt));
    ASSERT_TRUE(result && *result);
    EXPECT_EQ((*result)->body, AnyCodable::array({1, "a"}));
    const auto sent = server.receivedRequests().at(0);
    EXPECT_TRUE(sent.body.empty());
    EXPECT_FALSE(sent.headers.contains("Content-Type"));
}

}  // namespace
}  // namespace korvane
