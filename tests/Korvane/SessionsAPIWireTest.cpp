// Sessions on the wire: the call the element library makes, and authorize's empty answer.

#include <gtest/gtest.h>

#include "Korvane/ApiWireTable.hpp"
#include "Korvane/SessionsAPI.hpp"

namespace korvane {
namespace {

using testing::decoded;
using testing::Finish;
using testing::WireRow;

class SessionsAPIWireTest : public testing::ApiWireTest {};

TEST_F(SessionsAPIWireTest, EveryOperationOnTheWire) {
    const AuthorizeSessionRequest full{
        .nonce = "n1",
        .expiresAt = "2030-01-01T00:00:00Z",
        .permissions = std::vector<std::string>{"token:read"},
        .rules = std::vector<AccessRule>{AccessRule{.description = "pci only",
                                                    .priority = 1,
                                                    .container = "/pci/",
                                                    .transform = "mask",
                                                    .conditions = std::vector<Condition>{Condition{
                                                        .attribute = "id", ._operator = "starts_with", .value = "t"}},
                                                    .permissions = std::vector<std::string>{"token:use"}}}};
    // clang-format off
    const std::vector<WireRow> rows = {
        {.api = "SessionsAPI", .operation = "create",
         .call = [](Finish done) {
             SessionsAPI::create(decoded<CreateSessionResponse>(done, [](const CreateSessionResponse& session) {
                 EXPECT_EQ(session.sessionKey, "sk");
                 EXPECT_EQ(session.nonce, "n1");
                 EXPECT_EQ(session.expiresAt, Date(std::chrono::milliseconds(1'705'320'000'123)));
             }));
         },
         .status = 201, .response = R"({"session_key":"sk","nonce":"n1","expires_at":"2024-01-15T12:00:00.123Z"})",
         .method = "POST", .path = "/sessions"},
        {.api = "SessionsAPI", .operation = "authorize",
         .call = [full](Finish done) { SessionsAPI::authorize(full, decoded<Void>(done)); },
         .status = 202, .response = "not json, never read",
         .method = "POST", .path = "/sessions/authorize",
         .body = R"({"nonce":"n1","expires_at":"2030-01-01T00:00:00Z","permissions":["token:read"],
                     "rules":[{"description":"pci only","priority":1,"container":"/pci/","transform":"mask",
                               "conditions":[{"attribute":"id","operator":"starts_with","value":"t"}],
                               "permissions":["token:use"]}]})"},
        {.api = "SessionsAPI", .operation = "authorize",
         .call = [](Finish done) { SessionsAPI::authorize({.nonce = "n2"}, decoded<Void>(done)); },
         .status = 204,
         .method = "POST", .path = "/sessions/authorize", .body = R"({"nonce":"n2"})"},
    };
    // clang-format on
    testing::expectEveryOperationHasARow<SessionsAPI>(rows, "SessionsAPI");
    walk(rows);
}

TEST_F(SessionsAPIWireTest, CreateBuilderCarriesTheCallersHeadersAndNoContentType) {
    auto builder = SessionsAPI::create.withRequestBuilder();
    EXPECT_EQ(server.requestCount(), 0u) << "the builder form sends nothing";
    builder->addHeader("KV-API-KEY", "key");
    answerWith(200, R"({"nonce":"n"})");
    auto result = run(builder);
    ASSERT_TRUE(result && *result);
    EXPECT_EQ((*result)->body.nonce, "n");
    const auto sent = server.receivedRequests().at(0);
    EXPECT_EQ(sent.header("KV-API-KEY"), "key");
    EXPECT_FALSE(sent.headers.contains("Content-Type"));
}

}  // namespace
}  // namespace korvane
