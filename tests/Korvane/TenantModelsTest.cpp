// The tenant models against their JSON: every field, only the required ones, a required key
// missing, and the invitation status's raw values.

#include <gtest/gtest.h>

#include <tuple>

#include <nlohmann/json.hpp>

#include "Korvane/CreateTenantInvitationRequest.hpp"
#include "Korvane/GetTenantInvitations.hpp"
#include "Korvane/GetTenantMembers.hpp"
#include "Korvane/ModelRoundTrip.hpp"
#include "Korvane/Tenant.hpp"
#include "Korvane/TenantInvitationResponsePaginatedList.hpp"
#include "Korvane/TenantMemberResponsePaginatedList.hpp"
#include "Korvane/TenantUsageReport.hpp"
#include "Korvane/UpdateTenantRequest.hpp"

namespace korvane {
namespace {

using testing::fullCase;

// Map members are listed in key order, the order in which maps are written.
#define U1 "E621E1F8-C36C-495A-93FC-0C247A3E6E5F"
#define U2 "0D2A9A4E-51E4-4B1B-8A3E-3C6F3B0F5A11"
#define D1 "2024-01-15T12:00:00.123Z"
#define D2 "2024-02-29T23:59:59.000Z"
#define PAGE R"("pagination":{"total_items":3,"page_number":1,"page_size":2,"total_pages":2})"
#define INVITATION                                                                                     \
    R"({"id":")" U1 R"(","tenant_id":")" U2 R"(","email":"a@example.com","status":"EXPIRED",)"         \
    R"("expires_at":")" D2 R"(","created_by":")" U1 R"(","created_at":")" D1 R"(","modified_by":")" U2 \
    R"(","modified_at":")" D2 R"("})"
#define USER R"({"id":")" U1 R"(","email":"a@example.com","first_name":"Ada","last_name":"Byron","picture":"p.png"})"
#define MEMBER                                                                                         \
    R"({"id":")" U1 R"(","tenant_id":")" U2 R"(","user":)" USER R"(,"role":"ADMIN","created_by":")" U2 \
    R"(","created_date":")" D1 R"(","modified_by":")" U1 R"(","modified_at":")" D2 R"("})"
#define METRICS R"({"count":5000000000,"last_created_at":")" D1 R"("})"
#define TOKEN_REPORT                                                                \
    R"({"included_monthly_active_tokens":1000,"monthly_active_tokens":5000000001,)" \
    R"("metrics_by_type":{"bank":{},"card":)" METRICS R"(},)"                       \
    R"("monthly_active_token_history":[{"year":2024,"month":1,"count":42},{"year":2023}]})"

TEST(TenantModels, RoundTripWithEveryFieldAndWithOnlyTheRequiredOnes) {
    const testing::ModelCase cases[] = {
        fullCase<Tenant>("Tenant", R"({"id":")" U1 R"(","owner_id":")" U2 R"(","name":"Acme","created_by":")" U1
                                   R"(","created_at":")" D1 R"(","modified_by":")" U2 R"(","modified_at":")" D2
                                   R"(","settings":{"mfa":"on","region":"eu"}})"),
        fullCase<UpdateTenantRequest>("UpdateTenantRequest", R"({"name":"Acme","settings":{"a":"b"}})",
                                      R"({"name":"Acme"})"),
        fullCase<CreateTenantInvitationRequest>("CreateTenantInvitationRequest", R"({"email":"a@example.com"})",
                                                R"({"email":"a@example.com"})"),
        fullCase<TenantInvitationResponse>("TenantInvitationResponse", INVITATION),
        fullCase<TenantInvitationResponsePaginatedList>("TenantInvitationResponsePaginatedList",
                                                        "{" PAGE R"(,"data":[)" INVITATION R"(,{}]})"),
        fullCase<TenantMemberResponse>("TenantMemberResponse", MEMBER),
        fullCase<TenantMemberResponsePaginatedList>("TenantMemberResponsePaginatedList",
                                                    "{" PAGE R"(,"data":[)" MEMBER "]}"),
        fullCase<User>("User", USER),
        fullCase<TenantUsageReport>("TenantUsageReport", R"({"token_report":)" TOKEN_REPORT "}"),
        fullCase<TokenReport>("TokenReport", TOKEN_REPORT),
        fullCase<TokenMetrics>("TokenMetrics", METRICS),
        fullCase<MonthlyActiveTokenHistory>("MonthlyActiveTokenHistory",
                                            R"({"year":2024,"month":12,"count":9000000000})"),
        fullCase<GetTenantInvitations>("GetTenantInvitations", R"({"status":"PENDING","page":0,"size":25})"),
        fullCase<GetTenantMembers>("GetTenantMembers", R"({"user_id":[")" U1 R"(",")" U2 R"("],"page":3,"size":1})"),
    };
    for (const auto& c : cases) testing::expectRoundTrips(c);
}

TEST(TenantModels, MetricsByTypeIsAMapOfMetricsAndCountsAreWide) {
    auto report = CodableHelper::decode<TokenReport>(TOKEN_REPORT);
    ASSERT_TRUE(report) << report.error().description();
    ASSERT_TRUE(report->metricsByType);
    ASSERT_EQ(report->metricsByType->size(), 2u);
    EXPECT_EQ(report->metricsByType->at("card").count, 5'000'000'000);
    EXPECT_EQ(report->metricsByType->at("card").lastCreatedAt, Date(std::chrono::milliseconds(1'705'320'000'123)));
    EXPECT_EQ(report->metricsByType->at("bank"), TokenMetrics{});
    EXPECT_EQ(report->monthlyActiveTokens, 5'000'000'001);

    auto notAnObject = CodableHelper::decode<TokenReport>(R"({"metrics_by_type":[{"count":1}]})");
    ASSERT_FALSE(notAnObject);
    EXPECT_EQ(notAnObject.error().kind, DecodingError::Kind::typeMismatch);
}

TEST(TenantModels, InvitationStatusTravelsAsItsRawValueAndAnUnknownOneFails) {
    auto pending = CodableHelper::decode<TenantInvitationResponse>(R"({"status":"PENDING"})");
    ASSERT_TRUE(pending);
    EXPECT_EQ(pending->status, TenantInvitationStatus::pending);

    for (const char* json : {R"({"status":"pending"})" /* case matters */, R"({"status":"ACCEPTED"})" /* unknown */}) {
        SCOPED_TRACE(json);
        auto failed = CodableHelper::decode<TenantInvitationResponse>(json);
        ASSERT_FALSE(failed);
        EXPECT_EQ(failed.error().kind, DecodingError::Kind::dataCorrupted);
        EXPECT_EQ(failed.error().codingPath, anycodable::CodingPath{"status"});
    }
}

TEST(TenantModels, AMalformedUuidFailsDecoding) {
    auto failed = CodableHelper::decode<GetTenantMembers>(R"({"user_id":[")" U1 R"(","not-a-uuid"]})");
    ASSERT_FALSE(failed);
    EXPECT_EQ(failed.error().codingPath, (anycodable::CodingPath{"user_id", "Index 1"}));
}

}  // namespace
}  // namespace korvane
