// Every vault model against its wire form, one row each: the keys in field order, which are
// required ("!") and which are written as null when absent ("~"), and where open content goes
// ("*"). The check fills every field of the model through its own field table, each with a
// value of its own, and then holds the model to the row:
//  - the value encodes to exactly the row's keys, in order, and decodes back equal, with an
//    equal hash;
//  - a required key left out or null fails to decode (keyNotFound, valueNotFound); any other
//    key left out or null reads as absent, a value that equality and the hash tell apart, and
//    the rest of the value is unchanged;
//  - an unknown key is dropped, or kept after the named fields by an open model.
// What the filled values can't show (how dates, wide counts, enums and nested lists read
// from text the vault writes) is in the hand-written tables below.

#include <gtest/gtest.h>

#include <algorithm>
#include <expected>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "Korvane/ApplicationTemplate.hpp"
#include "Korvane/AuthorizeSessionRequest.hpp"
#include "Korvane/CodableHelper.hpp"
#include "Korvane/CreateApplicationRequest.hpp"
#include "Korvane/CreateProxyRequest.hpp"
#include "Korvane/CreateReactorFormulaRequest.hpp"
#include "Korvane/CreateReactorRequest.hpp"
#include "Korvane/CreateSessionResponse.hpp"
#include "Korvane/CreateTenantInvitationRequest.hpp"
#include "Korvane/CreateTokenRequest.hpp"
#include "Korvane/CreateTokenResponse.hpp"
#include "Korvane/CreateTransactionResponse.hpp"
#include "Korvane/GetApplications.hpp"
#include "Korvane/GetLogs.hpp"
#include "Korvane/GetPermissions.hpp"
#include "Korvane/GetProxies.hpp"
#include "Korvane/GetReactorFormulas.hpp"
#include "Korvane/GetReactors.hpp"
#include "Korvane/GetTenantInvitations.hpp"
#include "Korvane/GetTenantMembers.hpp"
#include "Korvane/GetTokens.hpp"
#include "Korvane/Log.hpp"
#include "Korvane/LogEntityType.hpp"
#include "Korvane/Permission.hpp"
#include "Korvane/ProblemDetails.hpp"
#include "Korvane/Proxy.hpp"
#include "Korvane/ReactRequest.hpp"
#include "Korvane/ReactResponse.hpp"
#include "Korvane/Reactor.hpp"
#include "Korvane/SearchTokensRequest.hpp"
#include "Korvane/StringStringKeyValuePair.hpp"
#include "Korvane/Tenant.hpp"
#include "Korvane/TenantInvitationResponse.hpp"
#include "Korvane/TenantMemberResponse.hpp"
#include "Korvane/TenantUsageReport.hpp"
#include "Korvane/TokenPaginatedList.hpp"
#include "Korvane/UpdateApplicationRequest.hpp"
#include "Korvane/UpdateProxyRequest.hpp"
#include "Korvane/UpdateReactorFormulaRequest.hpp"
#include "Korvane/UpdateReactorRequest.hpp"
#include "Korvane/UpdateTenantRequest.hpp"
#include "Korvane/UpdateTokenRequest.hpp"
#include "Korvane/ValidationProblemDetails.hpp"

namespace korvane {
namespace {

using anycodable::AnyCodable;
using Json = nlohmann::ordered_json;
using Kind = DecodingError::Kind;

// Sets `out` and everything in it, each scalar to the next value of `n`.
template <class T>
void fill(T& out, int& n) {
    if constexpr (std::is_same_v<T, std::string>) {
        out = "s" + std::to_string(++n);
    } else if constexpr (std::is_same_v<T, bool>) {
        out = ++n % 2 == 0;
    } else if constexpr (std::is_same_v<T, std::int64_t>) {
        out = 5'000'000'000 + ++n;
    } else if constexpr (std::is_integral_v<T>) {
        out = ++n;
    } else if constexpr (std::is_same_v<T, platform::Uuid>) {
        const std::string digits = std::to_string(++n);
        out = *platform::Uuid::parse("00000000-0000-4000-8000-" + std::string(12 - digits.size(), '0') + digits);
    } else if constexpr (std::is_same_v<T, Date>) {
        out = Date(std::chrono::milliseconds(1'705'320'000'123 + 1000LL * ++n));
    } else if constexpr (std::is_same_v<T, AnyCodable>) {
        out = AnyCodable::map({{"n", ++n}, {"list", anycodable::Array{anycodable::Null{}, "x"}}});
    } else if constexpr (StringEnum<T>) {
        out = jsonCases(T{})[++n % jsonCases(T{}).size()].first;
    } else if constexpr (requires { out.has_value(); }) {
        fill(out.emplace(), n);
    } else if constexpr (requires { out.push_back({}); }) {
        fill(out.emplace_back(), n);
        fill(out.emplace_back(), n);
    } else if constexpr (JsonModel<T>) {
        std::apply(
            [&](const auto&... field) {
                (
                    [&] {
                        if constexpr (requires { field.key; }) {
                            fill(out.*(field.member), n);
                        } else {
                            (out.*(field.member))["*"] = AnyCodable(++n);  // the open content
                        }
                    }(),
                    ...);
            },
            T::jsonFields());
    } else {
        fill(out["a" + std::to_string(n)], n);  // a map
    }
}

template <class T>
void expectMatchesRow(const std::string& row) {
    const auto marked = [](const std::string& key, char mark) { return key.ends_with(mark); };
    const auto bare = [&](std::string key) { return key == "*" ? key : key.substr(0, key.find_first_of("!~")); };
    std::vector<std::string> keys, expectedKeys, writtenKeys;
    std::istringstream words(row);
    for (std::string word; words >> word;) keys.push_back(word), expectedKeys.push_back(bare(word));

    T value{};
    int n = 0;
    fill(value, n);
    const auto text = CodableHelper::encode(value);
    ASSERT_TRUE(text) << text.error().description();
    const Json full = Json::parse(*text);
    for (const auto& [key, ignored] : full.items()) writtenKeys.push_back(key);
    ASSERT_EQ(writtenKeys, expectedKeys) << *text;

    const auto decode = [](const Json& json) { return CodableHelper::decode<T>(json.dump()); };
    const auto back = decode(full);
    ASSERT_TRUE(back) << back.error().description();
    EXPECT_EQ(*back, value);
    EXPECT_EQ(std::hash<T>{}(*back), std::hash<T>{}(value));

    for (const std::string& key : keys) {
        if (key == "*") continue;
        for (const bool asNull : {false, true}) {
            SCOPED_TRACE("\"" + bare(key) + (asNull ? "\" null" : "\" left out"));
            Json changed = full;
            if (asNull) {
                changed[bare(key)] = nullptr;
            } else {
                changed.erase(bare(key));
            }
            const auto decoded = decode(changed);
            if (marked(key, '!')) {
                ASSERT_FALSE(decoded) << "a required key";
                EXPECT_EQ(decoded.error().kind, asNull ? Kind::valueNotFound : Kind::keyNotFound);
                continue;
            }
            ASSERT_TRUE(decoded) << decoded.error().description();
            EXPECT_NE(*decoded, value) << "equality misses the field";
            EXPECT_NE(std::hash<T>{}(*decoded), std::hash<T>{}(value)) << "the hash misses the field";
            Json expected = full;
            if (marked(key, '~')) {
                expected[bare(key)] = nullptr;
            } else {
                expected.erase(bare(key));
            }
            EXPECT_EQ(Json::parse(*CodableHelper::encode(*decoded)), expected);
        }
    }

    Json unknown = full;
    unknown["not_a_field"] = 1;
    const auto decoded = decode(unknown);
    ASSERT_TRUE(decoded) << decoded.error().description();
    const bool open = std::find(keys.begin(), keys.end(), "*") != keys.end();
    EXPECT_EQ(Json::parse(*CodableHelper::encode(*decoded)), open ? unknown : full) << "an unknown key";
}

struct ModelRow {
    const char* model;
    void (*check)(const std::string&);
    std::string keys;
};
// clang-format off
#define MODEL(T, keys) ModelRow{#T, &expectMatchesRow<T>, keys}
// clang-format on

TEST(ModelTable, EveryModelWritesAndReadsItsKeys) {
    // clang-format off
    const ModelRow rows[] = {
        MODEL(Condition, "attribute operator value"),
        MODEL(AccessRule, "description priority container transform conditions permissions"),
        MODEL(Application, "id tenant_id name key type created_by created_at modified_by modified_at expires_at "
                           "permissions rules"),
        MODEL(ApplicationTemplate, "id name description application_type template_type is_starter rules permissions"),
        MODEL(CreateApplicationRequest, "name! type! expires_at permissions rules"),
        MODEL(UpdateApplicationRequest, "name! permissions rules"),
        MODEL(GetApplications, "id type page size"),
        MODEL(CreateSessionResponse, "session_key nonce expires_at"),
        MODEL(AuthorizeSessionRequest, "nonce! expires_at permissions rules"),
        MODEL(CreateTransactionResponse, "id created_by created_at expires_at"),
        MODEL(Log, "tenant_id actor_id actor_type entity_type entity_id operation message created_at"),
        MODEL(LogEntityType, "display_name value"),
        MODEL(GetLogs, "entity_type entity_id start_date end_date page size"),
        MODEL(Permission, "type description application_types"),
        MODEL(GetPermissions, "application_type"),
        MODEL(Proxy, "id key tenant_id name destination_url request_reactor_id response_reactor_id require_auth "
                     "request_transform response_transform application_id configuration proxy_host created_by "
                     "created_at modified_by modified_at"),
        MODEL(ProxyTransform, "code"),
        MODEL(CreateProxyRequest, "name! destination_url! request_reactor_id response_reactor_id request_transform "
                                  "response_transform application configuration require_auth"),
        MODEL(UpdateProxyRequest, "name! destination_url! request_reactor_id response_reactor_id request_transform "
                                  "response_transform application configuration require_auth"),
        MODEL(GetProxies, "id name page size"),
        MODEL(Reactor, "id tenant_id name formula application created_by created_at modified_by modified_at "
                       "configuration"),
        MODEL(CreateReactorRequest, "name! formula application configuration"),
        MODEL(UpdateReactorRequest, "name! application configuration"),
        MODEL(ReactRequest, "args callback_url timeout_ms"),
        MODEL(ReactResponse, "tokens raw body headers"),
        MODEL(GetReactors, "id name page size"),
        MODEL(ReactorFormula, "id type status name description icon code created_by created_at modified_by "
                              "modified_at configuration request_parameters"),
        MODEL(ReactorFormulaConfiguration, "name! description type!"),
        MODEL(ReactorFormulaRequestParameter, "name! description type! optional"),
        MODEL(CreateReactorFormulaRequest, "id type! name! description icon code configuration request_parameters"),
        MODEL(UpdateReactorFormulaRequest, "type! name! description icon code configuration request_parameters"),
        MODEL(GetReactorFormulas, "name page size"),
        MODEL(Tenant, "id owner_id name created_by created_at modified_by modified_at settings"),
        MODEL(UpdateTenantRequest, "name! settings"),
        MODEL(CreateTenantInvitationRequest, "email!"),
        MODEL(TenantInvitationResponse, "id tenant_id email status expires_at created_by created_at modified_by "
                                        "modified_at"),
        MODEL(GetTenantInvitations, "status page size"),
        MODEL(TenantMemberResponse, "id tenant_id user role created_by created_date modified_by modified_at"),
        MODEL(User, "id email first_name last_name picture"),
        MODEL(GetTenantMembers, "user_id page size"),
        MODEL(TenantUsageReport, "token_report"),
        MODEL(TokenReport, "included_monthly_active_tokens monthly_active_tokens metrics_by_type "
                           "monthly_active_token_history"),
        MODEL(TokenMetrics, "count last_created_at"),
        MODEL(MonthlyActiveTokenHistory, "year month count"),
        MODEL(Token, "id type tenant_id data metadata encryption created_by created_at modified_by modified_at "
                     "fingerprint fingerprint_expression mask privacy search_indexes expires_at containers aliases"),
        MODEL(TokenPaginatedList, "pagination data"),
        MODEL(Pagination, "total_items page_number page_size total_pages"),
        MODEL(CreateTokenRequest, "id type data~ encryption privacy metadata search_indexes fingerprint_expression "
                                  "mask deduplicate_token expires_at containers"),
        MODEL(CreateTokenResponse, "id tenant_id type fingerprint fingerprint_expression mask data metadata privacy "
                                   "search_indexes created_by created_at modified_by modified_at expires_at "
                                   "containers aliases"),
        MODEL(UpdateTokenRequest, "data encryption privacy metadata search_indexes fingerprint_expression mask "
                                  "expires_at deduplicate_token containers"),
        MODEL(SearchTokensRequest, "query page size"),
        MODEL(GetTokens, "type id metadata page size"),
        MODEL(EncryptionMetadata, "cek kek"),
        MODEL(EncryptionKey, "key! prov alg"),
        MODEL(Privacy, "classification impact_level restriction_policy"),
        MODEL(UpdatePrivacy, "impact_level restriction_policy"),
        MODEL(StringStringKeyValuePair, "key! value!"),
        MODEL(ProblemDetails, "type title status detail instance *"),
        MODEL(ValidationProblemDetails, "errors type title status detail instance *"),
    };
    // clang-format on
    for (const ModelRow& row : rows) {
        SCOPED_TRACE(row.model);
        row.check(row.keys);
    }
}

// A decoding of `json` as T: the value, or the error.
using Reading = std::function<std::expected<std::string, DecodingError>()>;
template <class T>
Reading reading(std::string json) {
    return [json]() -> std::expected<std::string, DecodingError> {
        auto value = CodableHelper::decode<T>(json);
        if (!value) return std::unexpected(value.error());
        return *CodableHelper::encode(*value);
    };
}
template <class T>
std::string written(const T& value) {
    return *CodableHelper::encode(value);
}

const Date kJan15 = Date(std::chrono::milliseconds(1'705'320'000'123));  // 2024-01-15T12:00:00.123Z
#define ID "E621E1F8-C36C-495A-93FC-0C247A3E6E5F"
const auto kId = *platform::Uuid::parse(ID);

TEST(ModelTable, TextsOfTheVaultReadAsTheValuesTheyMean) {
    struct Row {
        const char* why;
        Reading read;
        std::string expected;
    };
    const Row rows[] = {
        {"a date with milliseconds", reading<CreateTransactionResponse>(R"({"expires_at":"2024-01-15T12:00:00.123Z"})"),
         written(CreateTransactionResponse{.expiresAt = kJan15})},
        {"a bare date is midnight GMT", reading<Application>(R"({"expires_at":"2025-01-01"})"),
         written(Application{.expiresAt = Date(std::chrono::milliseconds(1'735'689'600'000))})},
        {"counts wider than 32 bits", reading<TokenMetrics>(R"({"count":5000000000})"),
         written(TokenMetrics{.count = 5'000'000'000})},
        {"a UUID in lower case", reading<Proxy>(R"({"id":"e621e1f8-c36c-495a-93fc-0c247a3e6e5f"})"),
         written(Proxy{.id = kId})},
        {"a status by its raw value", reading<TenantInvitationResponse>(R"({"status":"EXPIRED"})"),
         written(TenantInvitationResponse{.status = TenantInvitationStatus::expired})},
        {"a null member is absent, nulls inside open JSON stay",
         reading<ReactResponse>(R"({"tokens":null,"body":{"a":[null,{"b":1}]}})"),
         written(ReactResponse{
             .body = AnyCodable::map({{"a", anycodable::Array{anycodable::Null{}, anycodable::Map{{"b", 1}}}}})})},
    };
    for (const Row& row : rows) {
        const auto read = row.read();
        ASSERT_TRUE(read) << row.why << ": " << read.error().description();
        EXPECT_EQ(*read, row.expected) << row.why;
    }
}

TEST(ModelTable, TextsThatMeanNoValueFailWithKindAndPath) {
    struct Row {
        const char* why;
        Reading read;
        Kind kind;
        anycodable::CodingPath path;
    };
    // clang-format off
    const Row rows[] = {
        {"a raw value differs in case", reading<TenantInvitationResponse>(R"({"status":"pending"})"),
         Kind::dataCorrupted, {"status"}},
        {"an unknown raw value", reading<TenantInvitationResponse>(R"({"status":"ACCEPTED"})"),
         Kind::dataCorrupted, {"status"}},
        {"a malformed UUID in a list", reading<GetTenantMembers>(R"({"user_id":[")" ID R"(","x"]})"),
         Kind::dataCorrupted, {"user_id", "Index 1"}},
    };
    // clang-format on
    for (const Row& row : rows) {
        const auto read = row.read();
        ASSERT_FALSE(read) << row.why << " read as " << *read;
        EXPECT_EQ(read.error().kind, row.kind) << row.why;
        EXPECT_EQ(read.error().codingPath, row.path) << row.why;
    }
}

}  // namespace
}  // namespace korvane
