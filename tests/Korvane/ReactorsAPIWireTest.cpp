// Reactors on the wire, and running one.

#include <gtest/gtest.h>

#include "Korvane/ApiWireTable.hpp"
#include "Korvane/DecodableRequestBuilderError.hpp"
#include "Korvane/ReactorsAPI.hpp"

namespace korvane {
namespace {

using anycodable::AnyCodable;
using platform::Uuid;
using testing::decoded;
using testing::Finish;
using testing::WireRow;
using Settings = std::map<std::string, std::string>;

const Uuid kReactor = *Uuid::parse("e621e1f8-c36c-495a-93fc-0c247a3e6e5f");
const Uuid kOther = *Uuid::parse("0d2a9a4e-51e4-4b1b-8a3e-3c6f3b0f5a11");
#define REACTOR_ID "E621E1F8-C36C-495A-93FC-0C247A3E6E5F"
#define OTHER_ID "0D2A9A4E-51E4-4B1B-8A3E-3C6F3B0F5A11"

constexpr const char* kReactorJson =
    R"({"id":"e621e1f8-c36c-495a-93fc-0c247a3e6e5f","name":"charge",
        "formula":{"id":")" OTHER_ID R"(","request_parameters":[{"name":"card","type":"token","optional":true}]},
        "application":{"id":")" OTHER_ID R"(","name":"checkout"},"configuration":{"KEY":"k"}})";

void expectCharge(const Reactor& reactor) {
    EXPECT_EQ(reactor.id, kReactor);
    EXPECT_EQ(reactor.formula->requestParameters->at(0)._optional, true);
    EXPECT_EQ(reactor.application->name, "checkout");
    EXPECT_EQ(reactor.configuration, (Settings{{"KEY", "k"}}));
}

class ReactorsAPIWireTest : public testing::ApiWireTest {};

TEST_F(ReactorsAPIWireTest, EveryOperationOnTheWire) {
    const CreateReactorRequest fullCreate{
        .name = "charge",
        .formula = ReactorFormula{.id = kOther,
                                  .configuration =
                                      std::vector<ReactorFormulaConfiguration>{{.name = "KEY", .type = "string"}}},
        .application = Application{.id = kOther},
        .configuration = Settings{{"KEY", "k"}}};
    const UpdateReactorRequest fullUpdate{
        .name = "charge 2", .application = Application{.name = "checkout"}, .configuration = Settings{}};
    const ReactRequest react{.args = AnyCodable::map({{"card", "{{ token }}"}, {"amount", 1250}}),
                             .callbackUrl = "https://cb.test/done?x=1",
                             .timeoutMs = 5000};
    const auto charge = [](Finish done) { return decoded<Reactor>(std::move(done), expectCharge); };

    const std::vector<WireRow> rows = {
        {.api = "ReactorsAPI",
         .operation = "callGet",
         .call =
             [](Finish done) {
                 ReactorsAPI::callGet(std::nullopt, std::nullopt, std::nullopt, std::nullopt,
                                      decoded<ReactorPaginatedList>(done));
             },
         .response = "{}",
         .method = "GET",
         .path = "/reactors",
         .rawQuery = ""},
        {.api = "ReactorsAPI",
         .operation = "callGet",
         .call =
             [](Finish done) {
                 ReactorsAPI::callGet(std::vector<Uuid>{kReactor, kOther}, "card charge+1", 0, 10,
                                      decoded<ReactorPaginatedList>(done, [](const ReactorPaginatedList& list) {
                                          EXPECT_EQ(list.pagination->totalPages, 4);
                                          ASSERT_EQ(list.data->size(), 1u);
                                          expectCharge(list.data->at(0));
                                      }));
             },
         .response = std::string(R"({"pagination":{"total_pages":4},"data":[)") + kReactorJson + "]}",
         .method = "GET",
         .path = "/reactors",
         .query = {{"id", REACTOR_ID}, {"id", OTHER_ID}, {"name", "card charge+1"}, {"page", "0"}, {"size", "10"}},
         .rawQuery = "id=" REACTOR_ID "&id=" OTHER_ID "&name=card%20charge+1&page=0&size=10"},
        {.api = "ReactorsAPI",
         .operation = "create",
         .call = [=](Finish done) { ReactorsAPI::create(fullCreate, charge(done)); },
         .status = 201,
         .response = kReactorJson,
         .method = "POST",
         .path = "/reactors",
         .body =
             R"({"name":"charge","formula":{"id":")" OTHER_ID R"(","configuration":[{"name":"KEY","type":"string"}]},
                     "application":{"id":")" OTHER_ID R"("},"configuration":{"KEY":"k"}})"},
        {.api = "ReactorsAPI",
         .operation = "delete_",
         .call = [](Finish done) { ReactorsAPI::delete_(kReactor, decoded<Void>(done)); },
         .status = 204,
         .method = "DELETE",
         .path = "/reactors/" REACTOR_ID},
        {.api = "ReactorsAPI",
         .operation = "getById",
         .call = [=](Finish done) { ReactorsAPI::getById(kReactor, charge(done)); },
         .response = kReactorJson,
         .method = "GET",
         .path = "/reactors/" REACTOR_ID},
        {.api = "ReactorsAPI",
         .operation = "react",
         .call =
             [=](Finish done) {
                 ReactorsAPI::react(kReactor, react, decoded<ReactResponse>(done, [](const ReactResponse& response) {
                                        EXPECT_EQ(response.tokens, AnyCodable::map({{"card", "tok_1"}}));
                                        EXPECT_EQ(response.raw, AnyCodable(anycodable::Array{1, "two"}));
                                        EXPECT_FALSE(response.body);
                                        EXPECT_EQ(response.headers, AnyCodable::map({{"X-Trace", "t"}}));
                                    }));
             },
         .response = R"({"tokens":{"card":"tok_1"},"raw":[1,"two"],"body":null,"headers":{"X-Trace":"t"}})",
         .method = "POST",
         .path = "/reactors/" REACTOR_ID "/react",
         .body = R"({"args":{"card":"{{ token }}","amount":1250},"callback_url":"https://cb.test/done?x=1",
                     "timeout_ms":5000})"},
        {.api = "ReactorsAPI",
         .operation = "update",
         .call = [=](Finish done) { ReactorsAPI::update(kReactor, fullUpdate, charge(done)); },
         .response = kReactorJson,
         .method = "PUT",
         .path = "/reactors/" REACTOR_ID,
         .body = R"({"name":"charge 2","application":{"name":"checkout"},"configuration":{}})"},
    };
    testing::expectEveryOperationHasARow<ReactorsAPI>(rows, "ReactorsAPI");
    walk(rows);
}

// A run's answer is a model, not an optional one: a reactor that answers nothing is a failure.
TEST_F(ReactorsAPIWireTest, AReactionAnsweredWith204FailsAsEmptyData) {
    answerWith(204, "");
    std::optional<ErrorResponse> failure;
    bool finished = false;
    ReactorsAPI::react(kReactor, ReactRequest{},
                       [&](std::optional<ReactResponse> value, std::optional<ErrorResponse> error) {
                           EXPECT_FALSE(value);
                           failure = std::move(error);
                           finished = true;
                       });
    ASSERT_TRUE(waitFor([&] { return finished; }));
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->code, 204);
    ASSERT_NE(failure->errorAs<DecodableRequestBuilderError>(), nullptr);
    EXPECT_EQ(failure->errorAs<DecodableRequestBuilderError>()->kind(),
              DecodableRequestBuilderError::Kind::emptyDataResponse);
    EXPECT_EQ(nlohmann::json::parse(server.receivedRequests().at(0).body), nlohmann::json::object())
        << "an empty request still goes as an object";
}

}  // namespace
}  // namespace korvane
