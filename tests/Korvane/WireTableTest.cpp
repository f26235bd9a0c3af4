// Every operation of every API class on the wire: one table, walked in both call forms (see
// WireTable.hpp). Rows with every parameter present also show how values are escaped.

#include <gtest/gtest.h>

#include "Korvane/ApplicationTemplatesAPI.hpp"
#include "Korvane/ApplicationsAPI.hpp"
#include "Korvane/LogsAPI.hpp"
#include "Korvane/PermissionsAPI.hpp"
#include "Korvane/ProxiesAPI.hpp"
#include "Korvane/ReactorFormulasAPI.hpp"
#include "Korvane/ReactorsAPI.hpp"
#include "Korvane/SessionsAPI.hpp"
#include "Korvane/TenantsAPI.hpp"
#include "Korvane/TokenizeAPI.hpp"
#include "Korvane/TokensAPI.hpp"
#include "Korvane/TransactionsAPI.hpp"
#include "Korvane/WireTable.hpp"

namespace korvane {
namespace {

using anycodable::AnyCodable;
using platform::Uuid;
using testing::on;
using testing::WireRow;
using Strings = std::vector<std::string>;
using Uuids = std::vector<Uuid>;
using Settings = std::map<std::string, std::string>;

#define ID1 "E621E1F8-C36C-495A-93FC-0C247A3E6E5F"
#define ID2 "0D2A9A4E-51E4-4B1B-8A3E-3C6F3B0F5A11"
#define JAN15 "2024-01-15T12:00:00.123Z"
const Uuid k1 = *Uuid::parse("e621e1f8-c36c-495a-93fc-0c247a3e6e5f");  // written upper case
const Uuid k2 = *Uuid::parse(ID2);
const Date kJan15 = Date(std::chrono::milliseconds(1'705'320'000'123));
constexpr auto none = std::nullopt;

// Answers, in field order, with keys that only the right model has.
#define APPLICATION R"({"id":")" ID1 R"(","tenant_id":")" ID2 R"(","key":"key_1","rules":[{"priority":2}]})"
#define PROXY R"({"id":")" ID1 R"(","destination_url":"https://psp.test","require_auth":false,"proxy_host":"p"})"
#define FORMULA R"({"id":")" ID1 R"(","status":"verified","request_parameters":[{"name":"card","type":"token"}]})"
#define REACTOR R"({"id":")" ID1 R"(","name":"charge","formula":{"id":")" ID2 R"("},"configuration":{"KEY":"k"}})"
#define INVITATION R"({"id":")" ID1 R"(","email":"a@example.com","status":"PENDING","expires_at":")" JAN15 R"("})"
#define REPORT R"({"token_report":{"monthly_active_tokens":5000000000,"metrics_by_type":{"card":{"count":7}}}})"
#define TOKEN R"({"id":"t1","fingerprint":"f","aliases":["x"]})"

class WireTable : public testing::WireTableTest {};

TEST_F(WireTable, EveryOperationOfTheVaultClient) {
    const ProxyTransform code{.code = "c"};
    const CreateProxyRequest proxy{.name = "psp",
                                   .destinationUrl = "https://psp.test/pay?v=2",
                                   .requestReactorId = k2,
                                   .responseReactorId = k1,
                                   .requestTransform = code,
                                   .responseTransform = ProxyTransform{},
                                   .application = Application{.id = k2},
                                   .configuration = Settings{{"k", "v"}},
                                   .requireAuth = true};
    const UpdateProxyRequest proxyUpdate{.name = "psp", .destinationUrl = "https://psp.test", .requireAuth = false};
    const CreateReactorFormulaRequest formula{
        .id = k1,
        .type = "private",
        .name = "charge",
        .description = "d",
        .icon = "data:,",
        .code = "module.exports = async () => {};",
        .configuration = std::vector<ReactorFormulaConfiguration>{{.name = "KEY", .type = "string"}},
        .requestParameters = std::vector<ReactorFormulaRequestParameter>{{.name = "card", .type = "token"}}};
    const UpdateReactorFormulaRequest formulaUpdate{.type = "private", .name = "charge", .code = "c"};
    const CreateReactorRequest reactor{.name = "charge",
                                       .formula = ReactorFormula{.id = k2},
                                       .application = Application{.id = k2},
                                       .configuration = Settings{{"KEY", "k"}}};
    const ReactRequest react{.args = AnyCodable::map({{"card", "{{ token }}"}, {"amount", 1250}}),
                             .callbackUrl = "https://cb.test/done?x=1",
                             .timeoutMs = 5000};
    const AuthorizeSessionRequest authorize{
        .nonce = "n1",
        .expiresAt = "2030-01-01T00:00:00Z",
        .permissions = Strings{"token:read"},
        .rules = std::vector<AccessRule>{{.priority = 1, .conditions = std::vector<Condition>{{.attribute = "id"}}}}};
    const CreateTokenRequest card{.type = "card"};

    // clang-format off
    const WireRow rows[] = {
        {.call = on(OP(ApplicationsAPI, callGet), none, none, none, none), .request = "GET /applications",
         .response = "{}"},
        {.call = on(OP(ApplicationsAPI, callGet), Uuids{k1, k2}, Strings{"public", "a b+c&d=e"}, 0, 10),
         // What would split the value is escaped; "+" stays, as the phone's URL components leave it.
         .request = "GET /applications?id=" ID1 "&id=" ID2 "&type=public&type=a%20b+c%26d%3De&page=0&size=10",
         .response = R"({"pagination":{"total_items":1},"data":[)" APPLICATION "]}",
         .query = {{"id", ID1}, {"id", ID2}, {"type", "public"}, {"type", "a b+c&d=e"}, {"page", "0"}, {"size", "10"}}},
        {.call = on(OP(ApplicationsAPI, create), CreateApplicationRequest{.name = "checkout", .type = "public",
             .expiresAt = "in 30 days", .permissions = Strings{}, .rules = std::vector<AccessRule>{{.container = "/"}}}),
         .request = "POST /applications",
         .body = R"({"name":"checkout","type":"public","expires_at":"in 30 days","permissions":[],
                     "rules":[{"container":"/"}]})",
         .status = 201, .response = APPLICATION},
        {.call = on(OP(ApplicationsAPI, delete_), k1), .request = "DELETE /applications/" ID1, .status = 204},
        {.call = on(OP(ApplicationsAPI, getById), k1), .request = "GET /applications/" ID1, .response = APPLICATION},
        {.call = on(OP(ApplicationsAPI, getByKey)), .request = "GET /applications/key", .response = APPLICATION},
        {.call = on(OP(ApplicationsAPI, regenerateKey), k1), .request = "POST /applications/" ID1 "/regenerate",
         .response = APPLICATION},
        {.call = on(OP(ApplicationsAPI, update), k1, UpdateApplicationRequest{.name = "renamed"}),
         .request = "PUT /applications/" ID1, .body = R"({"name":"renamed"})", .response = APPLICATION},

        {.call = on(OP(ApplicationTemplatesAPI, callGet)), .request = "GET /application-templates",
         .response = R"([{"id":")" ID1 R"(","is_starter":true,"rules":[{"container":"/pci/"}]},{"name":"bare"}])"},
        {.call = on(OP(ApplicationTemplatesAPI, getById), k2), .request = "GET /application-templates/" ID2,
         .response = R"({"id":")" ID2 R"(","application_type":"private","template_type":"default"})"},

        {.call = on(OP(LogsAPI, callGet), none, none, none, none, none, none), .request = "GET /logs",
         .response = "{}"},
        {.call = on(OP(LogsAPI, callGet), "token", "t 1/2", kJan15, kJan15 + std::chrono::hours(36), 3, 25),
         .request = "GET /logs?entity_type=token&entity_id=t%201/2&start_date=" JAN15
                    "&end_date=2024-01-17T00:00:00.123Z&page=3&size=25",
         .response = R"({"pagination":{"page_number":3},"data":[{"actor_id":")" ID1 R"(","created_at":")" JAN15 R"("}]})"},
        {.call = on(OP(LogsAPI, getEntityTypes)), .request = "GET /logs/entity-types",
         .response = R"([{"display_name":"Token","value":"token"},{}])"},

        {.call = on(OP(PermissionsAPI, callGet), none), .request = "GET /permissions", .response = "[]"},
        {.call = on(OP(PermissionsAPI, callGet), "public"), .request = "GET /permissions?application_type=public",
         .response = R"([{"type":"token:create","application_types":["public","private"]}])"},

        {.call = on(OP(ProxiesAPI, callGet), none, none, none, none), .request = "GET /proxies", .response = "{}"},
        {.call = on(OP(ProxiesAPI, callGet), Uuids{k2, k1}, "psp/eu 1", 2, 50),
         .request = "GET /proxies?id=" ID2 "&id=" ID1 "&name=psp/eu%201&page=2&size=50",
         .response = R"({"pagination":{"page_size":50},"data":[)" PROXY "]}"},
        {.call = on(OP(ProxiesAPI, create), proxy), .request = "POST /proxies",
         .body = R"({"name":"psp","destination_url":"https://psp.test/pay?v=2","request_reactor_id":")" ID2
                 R"(","response_reactor_id":")" ID1 R"(","request_transform":{"code":"c"},"response_transform":{},
                     "application":{"id":")" ID2 R"("},"configuration":{"k":"v"},"require_auth":true})",
         .status = 201, .response = PROXY},
        {.call = on(OP(ProxiesAPI, delete_), k1), .request = "DELETE /proxies/" ID1, .status = 204},
        {.call = on(OP(ProxiesAPI, getById), k1), .request = "GET /proxies/" ID1, .response = PROXY},
        {.call = on(OP(ProxiesAPI, update), k1, proxyUpdate), .request = "PUT /proxies/" ID1,
         .body = R"({"name":"psp","destination_url":"https://psp.test","require_auth":false})", .response = PROXY},

        {.call = on(OP(ReactorFormulasAPI, callGet), none, none, none), .request = "GET /reactor-formulas",
         .response = "{}"},
        {.call = on(OP(ReactorFormulasAPI, callGet), "card & bank", 1, 5),
         .request = "GET /reactor-formulas?name=card%20%26%20bank&page=1&size=5",
         .response = R"({"data":[)" FORMULA "]}"},
        {.call = on(OP(ReactorFormulasAPI, create), formula), .request = "POST /reactor-formulas",
         .body = R"({"id":")" ID1 R"(","type":"private","name":"charge","description":"d","icon":"data:,",
                     "code":"module.exports = async () => {};","configuration":[{"name":"KEY","type":"string"}],
                     "request_parameters":[{"name":"card","type":"token"}]})",
         .status = 201, .response = FORMULA},
        {.call = on(OP(ReactorFormulasAPI, delete_), k1), .request = "DELETE /reactor-formulas/" ID1, .status = 204},
        {.call = on(OP(ReactorFormulasAPI, getById), k1), .request = "GET /reactor-formulas/" ID1,
         .response = FORMULA},
        {.call = on(OP(ReactorFormulasAPI, update), k1, formulaUpdate), .request = "PUT /reactor-formulas/" ID1,
         .body = R"({"type":"private","name":"charge","code":"c"})", .response = FORMULA},

        {.call = on(OP(ReactorsAPI, callGet), none, none, none, none), .request = "GET /reactors", .response = "{}"},
        {.call = on(OP(ReactorsAPI, callGet), Uuids{k1}, "card charge+1", 0, 10),
         .request = "GET /reactors?id=" ID1 "&name=card%20charge+1&page=0&size=10",
         .response = R"({"pagination":{"total_pages":4},"data":[)" REACTOR "]}"},
        {.call = on(OP(ReactorsAPI, create), reactor), .request = "POST /reactors",
         .body = R"({"name":"charge","formula":{"id":")" ID2 R"("},"application":{"id":")" ID2 R"("},
                     "configuration":{"KEY":"k"}})",
         .status = 201, .response = REACTOR},
        {.call = on(OP(ReactorsAPI, delete_), k1), .request = "DELETE /reactors/" ID1, .status = 204},
        {.call = on(OP(ReactorsAPI, getById), k1), .request = "GET /reactors/" ID1, .response = REACTOR},
        {.call = on(OP(ReactorsAPI, react), k1, react), .request = "POST /reactors/" ID1 "/react",
         .body = R"({"args":{"card":"{{ token }}","amount":1250},"callback_url":"https://cb.test/done?x=1",
                     "timeout_ms":5000})",
         .response = R"({"tokens":{"card":"tok_1"},"raw":[1,"two"],"headers":{"X-Trace":"t"}})"},
        {.call = on(OP(ReactorsAPI, react), k1, ReactRequest{}), .request = "POST /reactors/" ID1 "/react",
         .body = "{}", .response = "{}"},
        {.call = on(OP(ReactorsAPI, update), k1, UpdateReactorRequest{.name = "charge 2", .configuration = Settings{}}),
         .request = "PUT /reactors/" ID1, .body = R"({"name":"charge 2","configuration":{}})", .response = REACTOR},

        {.call = on(OP(SessionsAPI, create)), .request = "POST /sessions", .status = 201,
         .response = R"({"session_key":"sk","nonce":"n1","expires_at":")" JAN15 R"("})"},
        {.call = on(OP(SessionsAPI, authorize), authorize), .request = "POST /sessions/authorize",
         .body = R"({"nonce":"n1","expires_at":"2030-01-01T00:00:00Z","permissions":["token:read"],
                     "rules":[{"priority":1,"conditions":[{"attribute":"id"}]}]})",
         .status = 202, .response = "not json, never read"},
        {.call = on(OP(SessionsAPI, authorize), AuthorizeSessionRequest{.nonce = "n2"}),
         .request = "POST /sessions/authorize", .body = R"({"nonce":"n2"})", .status = 204},

        {.call = on(OP(TenantsAPI, callGet)), .request = "GET /tenants/self",
         .response = R"({"id":")" ID1 R"(","owner_id":")" ID2 R"(","settings":{"region":"eu"}})"},
        {.call = on(OP(TenantsAPI, update), UpdateTenantRequest{.name = "Acme", .settings = Settings{{"mfa", "on"}}}),
         .request = "PUT /tenants/self", .body = R"({"name":"Acme","settings":{"mfa":"on"}})",
         .response = R"({"owner_id":")" ID2 R"("})"},
        {.call = on(OP(TenantsAPI, delete_)), .request = "DELETE /tenants/self", .status = 204},
        {.call = on(OP(TenantsAPI, createInvitation), CreateTenantInvitationRequest{.email = "a@example.com"}),
         .request = "POST /tenants/self/invitations", .body = R"({"email":"a@example.com"})", .status = 201,
         .response = INVITATION},
        {.call = on(OP(TenantsAPI, getInvitations), none, none, none), .request = "GET /tenants/self/invitations",
         .response = "{}"},
        {.call = on(OP(TenantsAPI, getInvitations), TenantInvitationStatus::expired, 0, 20),
         .request = "GET /tenants/self/invitations?status=EXPIRED&page=0&size=20",
         .response = R"({"pagination":{"total_items":1},"data":[)" INVITATION "]}"},
        {.call = on(OP(TenantsAPI, deleteInvitation), k1), .request = "DELETE /tenants/self/invitations/" ID1,
         .status = 204},
        {.call = on(OP(TenantsAPI, resendInvitation), k1), .request = "POST /tenants/self/invitations/" ID1 "/resend",
         .response = INVITATION},
        {.call = on(OP(TenantsAPI, getMembers), Uuids{k1, k2}, 1, 2),
         .request = "GET /tenants/self/members?user_id=" ID1 "&user_id=" ID2 "&page=1&size=2",
         .response = R"({"data":[{"user":{"first_name":"Ada"},"role":"ADMIN","created_date":")" JAN15 R"("}]})"},
        {.call = on(OP(TenantsAPI, getMembers), Uuids{}, none, 5), .request = "GET /tenants/self/members?size=5",
         .response = "{}"},
        {.call = on(OP(TenantsAPI, deleteMember), k2), .request = "DELETE /tenants/self/members/" ID2, .status = 204},
        {.call = on(OP(TenantsAPI, getTenantUsageReport)), .request = "GET /tenants/self/reports/usage",
         .response = REPORT},
        {.call = on(OP(TenantsAPI, getTenantOperationReport)), .request = "GET /tenants/self/reports/operations",
         .response = REPORT},

        {.call = on(OP(TokenizeAPI, tokenize), std::optional(AnyCodable::map({{"card", anycodable::Map{{"n", 1}}}}))),
         .request = "POST /tokenize", .body = R"({"card":{"n":1}})", .status = 201,
         .response = R"({"card":{"id":"t1"}})"},
        {.call = on(OP(TokenizeAPI, tokenize), none), .request = "POST /tokenize", .response = R"([1,"a"])"},

        {.call = on(OP(TokensAPI, callGet), none, none, none, none, none), .request = "GET /tokens", .response = "{}"},
        {.call = on(OP(TokensAPI, callGet), Strings{"card"}, Strings{"x", "y"}, none, 2, 50),
         .request = "GET /tokens?type=card&id=x&id=y&page=2&size=50",
         .response = R"({"pagination":{"total_items":1},"data":[)" TOKEN "]}"},
        // An empty list gives no item; a map is one item in the phone's printed form.
        {.call = on(OP(TokensAPI, callGet), Strings{}, none, Settings{{"key", "value"}}, none, none),
         .request = "GET /tokens?metadata=%5BAnyHashable(%22key%22):%20%22value%22%5D", .response = "{}",
         .query = {{"metadata", R"([AnyHashable("key"): "value"])"}}},
        {.call = on(OP(TokensAPI, create), card), .request = "POST /tokens", .body = R"({"type":"card","data":null})",
         .status = 201, .response = R"({"id":"t9","tenant_id":")" ID1 R"("})"},
        {.call = on(OP(TokensAPI, createAssociation), "p", "c"), .request = "POST /tokens/p/children/c",
         .status = 204},
        {.call = on(OP(TokensAPI, createChild), "p", card), .request = "POST /tokens/p/children",
         .body = R"({"type":"card","data":null})", .status = 201, .response = R"({"id":"t9","tenant_id":")" ID1 R"("})"},
        // A space is escaped and a slash kept, so the server reads two path segments.
        {.call = on(OP(TokensAPI, delete_), "a b/c"), .request = "DELETE /tokens/a%20b/c", .status = 204},
        {.call = on(OP(TokensAPI, deleteAssociation), "p", "c"), .request = "DELETE /tokens/p/children/c",
         .status = 204},
        {.call = on(OP(TokensAPI, getById), "t1"), .request = "GET /tokens/t1", .response = TOKEN},
        {.call = on(OP(TokensAPI, getChildren), "p", Strings{"card"}, none, none, none, 5),
         .request = "GET /tokens/p/children?type=card&size=5", .response = R"({"data":[)" TOKEN "]}"},
        {.call = on(OP(TokensAPI, search), SearchTokensRequest{.query = "q", .size = 3}),
         .request = "POST /tokens/search", .body = R"({"query":"q","size":3})",
         .response = R"({"data":[)" TOKEN "]}"},
        {.call = on(OP(TokensAPI, update), "t1",
             UpdateTokenRequest{.privacy = UpdatePrivacy{.impactLevel = "low"}, .deduplicateToken = false}),
         .request = "PATCH /tokens/t1", .body = R"({"privacy":{"impact_level":"low"},"deduplicate_token":false})",
         .response = TOKEN},

        {.call = on(OP(TransactionsAPI, create)), .request = "POST /transactions", .status = 201,
         .response = R"({"id":")" ID1 R"(","expires_at":")" JAN15 R"("})"},
        {.call = on(OP(TransactionsAPI, commit), k1), .request = "POST /transactions/" ID1 "/commit",
         .status = 204},
        {.call = on(OP(TransactionsAPI, rollback), k1), .request = "POST /transactions/" ID1 "/rollback",
         .response = "<html>ignored</html>"},
    };
#define COVERED(api) testing::expectEveryOperationHasARow<api>(rows, #api)
    COVERED(ApplicationsAPI); COVERED(ApplicationTemplatesAPI); COVERED(LogsAPI); COVERED(PermissionsAPI);
    COVERED(ProxiesAPI); COVERED(ReactorFormulasAPI); COVERED(ReactorsAPI); COVERED(SessionsAPI);
    COVERED(TenantsAPI); COVERED(TokenizeAPI); COVERED(TokensAPI); COVERED(TransactionsAPI);
#undef COVERED
    // clang-format on
    walk(rows);
}

// Query dates are written by the shared formatter as it stands at each call.
TEST_F(WireTable, AStartDateFollowsTheFormatterSetBetweenCalls) {
    const auto onlyStart = [](const std::string& expected) {
        return WireRow{.call = on(OP(LogsAPI, callGet), none, none, kJan15, none, none, none),
                       .request = "GET /logs?start_date=" + expected,
                       .response = "{}"};
    };
    walkOne(onlyStart(JAN15));
    auto dayOnly = std::make_shared<OpenISO8601DateFormatter>();
    ASSERT_TRUE(dayOnly->setDateFormat("yyyy-MM-dd"));
    CodableHelper::setDateFormatter(dayOnly);
    walkOne(onlyStart("2024-01-15"));
    CodableHelper::setDateFormatter(nullptr);
    walkOne(onlyStart(JAN15));
}

}  // namespace
}  // namespace korvane
