// Reactor formulas on the wire.

#include <gtest/gtest.h>

#include "Korvane/ApiWireTable.hpp"
#include "Korvane/ReactorFormulasAPI.hpp"

namespace korvane {
namespace {

using platform::Uuid;
using testing::decoded;
using testing::Finish;
using testing::WireRow;
using Configurations = std::vector<ReactorFormulaConfiguration>;
using Parameters = std::vector<ReactorFormulaRequestParameter>;

const Uuid kFormula = *Uuid::parse("e621e1f8-c36c-495a-93fc-0c247a3e6e5f");
#define FORMULA_ID "E621E1F8-C36C-495A-93FC-0C247A3E6E5F"

constexpr const char* kFormulaJson =
    R"({"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","type":"private","status":"verified","name":"charge",
        "code":"module.exports = async () => {};","created_at":"2024-01-15T12:00:00.123Z",
        "configuration":[{"name":"KEY","type":"string"}],
        "request_parameters":[{"name":"card","description":"d","type":"token","optional":false}]})";

void expectCharge(const ReactorFormula& formula) {
    EXPECT_EQ(formula.id, kFormula);
    EXPECT_EQ(formula.status, "verified");
    EXPECT_EQ(formula.createdAt, Date(std::chrono::milliseconds(1'705'320'000'123)));
    EXPECT_EQ(formula.configuration, (Configurations{{.name = "KEY", .type = "string"}}));
    EXPECT_EQ(formula.requestParameters,
              (Parameters{{.name = "card", .description = "d", .type = "token", ._optional = false}}));
}

class ReactorFormulasAPIWireTest : public testing::ApiWireTest {};

TEST_F(ReactorFormulasAPIWireTest, EveryOperationOnTheWire) {
    const CreateReactorFormulaRequest fullCreate{
        .id = kFormula,
        .type = "private",
        .name = "charge",
        .description = "charges a card",
        .icon = "data:,",
        .code = "module.exports = async () => {};",
        .configuration = Configurations{{.name = "KEY", .type = "string"}},
        .requestParameters = Parameters{{.name = "card", .type = "token", ._optional = true}}};
    const UpdateReactorFormulaRequest fullUpdate{
        .type = "private",
        .name = "charge",
        .description = "d",
        .icon = "i",
        .code = "c",
        .configuration = Configurations{},
        .requestParameters = Parameters{{.name = "n", .description = "x", .type = "string"}}};
    const auto charge = [](Finish done) { return decoded<ReactorFormula>(std::move(done), expectCharge); };

    const std::vector<WireRow> rows = {
        {.api = "ReactorFormulasAPI",
         .operation = "callGet",
         .call =
             [](Finish done) {
                 ReactorFormulasAPI::callGet(std::nullopt, std::nullopt, std::nullopt,
                                             decoded<ReactorFormulaPaginatedList>(done));
             },
         .response = "{}",
         .method = "GET",
         .path = "/reactor-formulas",
         .rawQuery = ""},
        {.api = "ReactorFormulasAPI",
         .operation = "callGet",
         .call =
             [](Finish done) {
                 ReactorFormulasAPI::callGet(
                     "card & bank", 1, 5,
                     decoded<ReactorFormulaPaginatedList>(done, [](const ReactorFormulaPaginatedList& list) {
                         ASSERT_EQ(list.data->size(), 1u);
                         expectCharge(list.data->at(0));
                     }));
             },
         .response = std::string(R"({"data":[)") + kFormulaJson + "]}",
         .method = "GET",
         .path = "/reactor-formulas",
         .query = {{"name", "card & bank"}, {"page", "1"}, {"size", "5"}},
         .rawQuery = "name=card%20%26%20bank&page=1&size=5"},
        {.api = "ReactorFormulasAPI",
         .operation = "create",
         .call = [=](Finish done) { ReactorFormulasAPI::create(fullCreate, charge(done)); },
         .status = 201,
         .response = kFormulaJson,
         .method = "POST",
         .path = "/reactor-formulas",
         .body = R"({"id":")" FORMULA_ID R"(","type":"private","name":"charge","description":"charges a card",
                     "icon":"data:,","code":"module.exports = async () => {};",
                     "configuration":[{"name":"KEY","type":"string"}],
                     "request_parameters":[{"name":"card","type":"token","optional":true}]})"},
        {.api = "ReactorFormulasAPI",
         .operation = "delete_",
         .call = [](Finish done) { ReactorFormulasAPI::delete_(kFormula, decoded<Void>(done)); },
         .status = 204,
         .method = "DELETE",
         .path = "/reactor-formulas/" FORMULA_ID},
        {.api = "ReactorFormulasAPI",
         .operation = "getById",
         .call = [=](Finish done) { ReactorFormulasAPI::getById(kFormula, charge(done)); },
         .response = kFormulaJson,
         .method = "GET",
         .path = "/reactor-formulas/" FORMULA_ID},
        {.api = "ReactorFormulasAPI",
         .operation = "update",
         .call = [=](Finish done) { ReactorFormulasAPI::update(kFormula, fullUpdate, charge(done)); },
         .response = kFormulaJson,
         .method = "PUT",
         .path = "/reactor-formulas/" FORMULA_ID,
         .body = R"({"type":"private","name":"charge","description":"d","icon":"i","code":"c","configuration":[],
                     "request_parameters":[{"name":"n","description":"x","type":"string"}]})"},
    };
    testing::expectEveryOperationHasARow<ReactorFormulasAPI>(rows, "ReactorFormulasAPI");
    walk(rows);
}

}  // namespace
}  // namespace korvane
