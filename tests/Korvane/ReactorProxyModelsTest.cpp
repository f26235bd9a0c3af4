// The reactor, formula and proxy models against their JSON: every field, only the required
// ones, a required key missing, and the open JSON members.

#include <gtest/gtest.h>

#include <tuple>

#include <nlohmann/json.hpp>

#include "Korvane/CreateProxyRequest.hpp"
#include "Korvane/CreateReactorFormulaRequest.hpp"
#include "Korvane/CreateReactorRequest.hpp"
#include "Korvane/GetProxies.hpp"
#include "Korvane/GetReactorFormulas.hpp"
#include "Korvane/GetReactors.hpp"
#include "Korvane/ModelRoundTrip.hpp"
#include "Korvane/ProxyPaginatedList.hpp"
#include "Korvane/ReactRequest.hpp"
#include "Korvane/ReactResponse.hpp"
#include "Korvane/ReactorFormulaPaginatedList.hpp"
#include "Korvane/ReactorPaginatedList.hpp"
#include "Korvane/UpdateProxyRequest.hpp"
#include "Korvane/UpdateReactorFormulaRequest.hpp"
#include "Korvane/UpdateReactorRequest.hpp"

namespace korvane {
namespace {

using testing::fullCase;

#define U1 "E621E1F8-C36C-495A-93FC-0C247A3E6E5F"
#define U2 "0D2A9A4E-51E4-4B1B-8A3E-3C6F3B0F5A11"
#define D1 "2024-01-15T12:00:00.123Z"
#define D2 "2024-02-29T23:59:59.000Z"
#define PAGE R"("pagination":{"total_items":3,"page_number":1,"page_size":2,"total_pages":2})"
#define STAMPS \
    R"("created_by":")" U1 R"(","created_at":")" D1 R"(","modified_by":")" U2 R"(","modified_at":")" D2 R"(")"
#define APPLICATION R"({"id":")" U2 R"(","name":"checkout","permissions":["token:read"]})"
#define FORMULA_CONFIGURATION \
    R"([{"name":"API_KEY","description":"the key","type":"string"},{"name":"N","type":"int"}])"
#define FORMULA_PARAMETERS \
    R"([{"name":"card","description":"a token","type":"token","optional":false},{"name":"x","type":"string"}])"
#define FORMULA                                                                                                \
    R"({"id":")" U1 R"(","type":"official","status":"verified","name":"charge","description":"d","icon":"i",)" \
    R"("code":"module.exports = async () => {};",)" STAMPS R"(,"configuration":)" FORMULA_CONFIGURATION        \
    R"(,"request_parameters":)" FORMULA_PARAMETERS "}"
#define REACTOR                                                                                                        \
    R"({"id":")" U1 R"(","tenant_id":")" U2 R"(","name":"charge","formula":)" FORMULA R"(,"application":)" APPLICATION \
    "," STAMPS R"(,"configuration":{"API_KEY":"k"}})"
#define TRANSFORM R"({"code":"module.exports = (req) => req;"})"
#define PROXY                                                                                                      \
    R"({"id":")" U1 R"(","key":"pk_1","tenant_id":")" U2 R"(","name":"psp","destination_url":"https://psp.test",)" \
    R"("request_reactor_id":")" U2 R"(","response_reactor_id":")" U1 R"(","require_auth":true,)"                   \
    R"("request_transform":)" TRANSFORM R"(,"response_transform":{},"application_id":")" U2 R"(",)"                \
    R"("configuration":{"a":"b"},"proxy_host":"https://proxy.test",)" STAMPS "}"
#define PROXY_BODY                                                                                                \
    R"({"name":"psp","destination_url":"https://psp.test","request_reactor_id":")" U1                             \
    R"(","response_reactor_id":")" U2 R"(","request_transform":)" TRANSFORM R"(,"response_transform":)" TRANSFORM \
    R"(,"application":)" APPLICATION R"(,"configuration":{},"require_auth":false})"

TEST(ReactorProxyModels, RoundTripWithEveryFieldAndWithOnlyTheRequiredOnes) {
    const testing::ModelCase cases[] = {
        fullCase<Reactor>("Reactor", REACTOR),
        fullCase<ReactorPaginatedList>("ReactorPaginatedList", "{" PAGE R"(,"data":[)" REACTOR R"(,{}]})"),
        fullCase<CreateReactorRequest>("CreateReactorRequest",
                                       R"({"name":"charge","formula":)" FORMULA R"(,"application":)" APPLICATION
                                       R"(,"configuration":{"API_KEY":"k"}})",
                                       R"({"name":"charge"})"),
        fullCase<UpdateReactorRequest>("UpdateReactorRequest",
                                       R"({"name":"charge","application":)" APPLICATION R"(,"configuration":{}})",
                                       R"({"name":"charge"})"),
        fullCase<ReactRequest>("ReactRequest",
                               R"({"args":{"card":"{{ token }}","n":[1,2.5,null]},"callback_url":"https://cb.test",)"
                               R"("timeout_ms":30000})"),
        fullCase<ReactResponse>("ReactResponse",
                                R"({"tokens":{"t":{"id":"tok"}},"raw":"text","body":[true,{"a":null}],)"
                                R"("headers":{"X-Trace":"1"}})"),
        fullCase<ReactorFormula>("ReactorFormula", FORMULA),
        fullCase<ReactorFormulaConfiguration>("ReactorFormulaConfiguration",
                                              R"({"name":"API_KEY","description":"the key","type":"string"})",
                                              R"({"name":"API_KEY","type":"string"})"),
        fullCase<ReactorFormulaRequestParameter>("ReactorFormulaRequestParameter",
                                                 R"({"name":"card","description":"d","type":"token","optional":true})",
                                                 R"({"name":"card","type":"token"})"),
        fullCase<ReactorFormulaPaginatedList>("ReactorFormulaPaginatedList", "{" PAGE R"(,"data":[)" FORMULA "]}"),
        fullCase<CreateReactorFormulaRequest>(
            "CreateReactorFormulaRequest",
            R"({"id":")" U1 R"(","type":"private","name":"charge","description":"d","icon":"i","code":"c",)"
            R"("configuration":)" FORMULA_CONFIGURATION R"(,"request_parameters":)" FORMULA_PARAMETERS "}",
            R"({"type":"private","name":"charge"})"),
        fullCase<UpdateReactorFormulaRequest>(
            "UpdateReactorFormulaRequest",
            R"({"type":"private","name":"charge","description":"d","icon":"i","code":"c",)"
            R"("configuration":[],"request_parameters":)" FORMULA_PARAMETERS "}",
            R"({"type":"private","name":"charge"})"),
        fullCase<Proxy>("Proxy", PROXY),
        fullCase<ProxyTransform>("ProxyTransform", TRANSFORM),
        fullCase<ProxyPaginatedList>("ProxyPaginatedList", "{" PAGE R"(,"data":[)" PROXY "]}"),
        fullCase<CreateProxyRequest>("CreateProxyRequest", PROXY_BODY,
                                     R"({"name":"psp","destination_url":"https://psp.test"})"),
        fullCase<UpdateProxyRequest>("UpdateProxyRequest", PROXY_BODY,
                                     R"({"name":"psp","destination_url":"https://psp.test"})"),
        fullCase<GetReactors>("GetReactors", R"({"id":[")" U1 R"("],"name":"charge","page":0,"size":10})"),
        fullCase<GetReactorFormulas>("GetReactorFormulas", R"({"name":"charge","page":0,"size":10})"),
        fullCase<GetProxies>("GetProxies", R"({"id":[")" U1 R"(",")" U2 R"("],"name":"psp","page":2,"size":5})"),
    };
    for (const auto& c : cases) testing::expectRoundTrips(c);
}

TEST(ReactorProxyModels, OpenJsonMembersKeepNullAndNestingAndAPresentNullIsAbsent) {
    auto response = CodableHelper::decode<ReactResponse>(R"({"tokens":null,"body":{"a":[null,{"b":1}]}})");
    ASSERT_TRUE(response) << response.error().description();
    EXPECT_FALSE(response->tokens) << "a JSON null member is absent, not a null value";
    ASSERT_TRUE(response->body);
    EXPECT_EQ(*response->body,
              anycodable::AnyCodable::map({{"a", anycodable::Array{anycodable::Null{}, anycodable::Map{{"b", 1}}}}}));
    auto encoded = CodableHelper::encode(*response);
    ASSERT_TRUE(encoded);
    EXPECT_EQ(encoded->find("tokens"), std::string::npos);
}

}  // namespace
}  // namespace korvane
