// The caller's tenant, its invitations, members and reports on the wire.

#include <gtest/gtest.h>

#include <type_traits>

#include "Korvane/ApiWireTable.hpp"
#include "Korvane/TenantsAPI.hpp"

namespace korvane {
namespace {

using platform::Uuid;
using testing::decoded;
using testing::Finish;
using testing::WireRow;

const Uuid kFirst = *Uuid::parse("e621e1f8-c36c-495a-93fc-0c247a3e6e5f");
const Uuid kSecond = *Uuid::parse("0d2a9a4e-51e4-4b1b-8a3e-3c6f3b0f5a11");
#define FIRST "E621E1F8-C36C-495A-93FC-0C247A3E6E5F"
#define SECOND "0D2A9A4E-51E4-4B1B-8A3E-3C6F3B0F5A11"

constexpr const char* kInvitationJson =
    R"({"id":"e621e1f8-c36c-495a-93fc-0c247a3e6e5f","email":"a@example.com","status":"PENDING",
        "expires_at":"2024-01-15T12:00:00.123Z"})";
constexpr const char* kReportJson =
    R"({"token_report":{"monthly_active_tokens":5000000000,"metrics_by_type":{"card":{"count":7}},
        "monthly_active_token_history":[{"year":2024,"month":1,"count":3}]}})";

void expectInvitation(const TenantInvitationResponse& invitation) {
    EXPECT_EQ(invitation.id, kFirst);
    EXPECT_EQ(invitation.status, TenantInvitationStatus::pending);
    EXPECT_EQ(invitation.expiresAt, Date(std::chrono::milliseconds(1'705'320'000'123)));
}

void expectReport(const TenantUsageReport& report) {
    ASSERT_TRUE(report.tokenReport);
    EXPECT_EQ(report.tokenReport->monthlyActiveTokens, 5'000'000'000);
    EXPECT_EQ(report.tokenReport->metricsByType->at("card").count, 7);
    EXPECT_EQ(report.tokenReport->monthlyActiveTokenHistory->at(0).month, 1);
}

// Both reports answer the usage model: a row with another model would not compile, and this
// says so where a reader looks for it.
static_assert(std::is_same_v<decltype(TenantsAPI::getTenantOperationReport.withRequestBuilder()),
                             std::shared_ptr<RequestBuilder<TenantUsageReport>>>);

class TenantsAPIWireTest : public testing::ApiWireTest {};

TEST_F(TenantsAPIWireTest, EveryOperationOnTheWire) {
    const auto invitation = [](Finish done) {
        return decoded<TenantInvitationResponse>(std::move(done), expectInvitation);
    };
    const auto report = [](Finish done) { return decoded<TenantUsageReport>(std::move(done), expectReport); };
    const std::vector<WireRow> rows = {
        {.api = "TenantsAPI",
         .operation = "callGet",
         .call =
             [](Finish done) {
                 TenantsAPI::callGet(decoded<Tenant>(done, [](const Tenant& tenant) {
                     EXPECT_EQ(tenant.ownerId, kSecond);
                     EXPECT_EQ(tenant.settings, (std::map<std::string, std::string>{{"region", "eu"}}));
                 }));
             },
         .response = R"({"id":")" FIRST R"(","owner_id":")" SECOND R"(","name":"Acme","settings":{"region":"eu"}})",
         .method = "GET",
         .path = "/tenants/self",
         .rawQuery = ""},
        {.api = "TenantsAPI",
         .operation = "update",
         .call =
             [](Finish done) {
                 TenantsAPI::update(
                     {.name = "Acme Ltd", .settings = std::map<std::string, std::string>{{"mfa", "on"}}},
                     decoded<Tenant>(done, [](const Tenant& tenant) { EXPECT_EQ(tenant.name, "Acme Ltd"); }));
             },
         .response = R"({"name":"Acme Ltd"})",
         .method = "PUT",
         .path = "/tenants/self",
         .body = R"({"name":"Acme Ltd","settings":{"mfa":"on"}})"},
        {.api = "TenantsAPI",
         .operation = "delete_",
         .call = [](Finish done) { TenantsAPI::delete_(decoded<Void>(done)); },
         .status = 204,
         .method = "DELETE",
         .path = "/tenants/self"},
        {.api = "TenantsAPI",
         .operation = "createInvitation",
         .call = [=](Finish done) { TenantsAPI::createInvitation({.email = "a@example.com"}, invitation(done)); },
         .status = 201,
         .response = kInvitationJson,
         .method = "POST",
         .path = "/tenants/self/invitations",
         .body = R"({"email":"a@example.com"})"},
        {.api = "TenantsAPI",
         .operation = "getInvitations",
         .call =
             [](Finish done) {
                 TenantsAPI::getInvitations(std::nullopt, std::nullopt, std::nullopt,
                                            decoded<TenantInvitationResponsePaginatedList>(done));
             },
         .response = "{}",
         .method = "GET",
         .path = "/tenants/self/invitations",
         .rawQuery = ""},
        {.api = "TenantsAPI",
         .operation = "getInvitations",
         .call =
             [](Finish done) {
                 TenantsAPI::getInvitations(TenantInvitationStatus::expired, 0, 20,
                                            decoded<TenantInvitationResponsePaginatedList>(
                                                done, [](const TenantInvitationResponsePaginatedList& list) {
                                                    ASSERT_EQ(list.data->size(), 1u);
                                                    expectInvitation(list.data->at(0));
                                                }));
             },
         .response = std::string(R"({"pagination":{"total_items":1},"data":[)") + kInvitationJson + "]}",
         .method = "GET",
         .path = "/tenants/self/invitations",
         .query = {{"status", "EXPIRED"}, {"page", "0"}, {"size", "20"}}},
        {.api = "TenantsAPI",
         .operation = "deleteInvitation",
         .call = [](Finish done) { TenantsAPI::deleteInvitation(kFirst, decoded<Void>(done)); },
         .status = 204,
         .method = "DELETE",
         .path = "/tenants/self/invitations/" FIRST},
        {.api = "TenantsAPI",
         .operation = "resendInvitation",
         .call = [=](Finish done) { TenantsAPI::resendInvitation(kFirst, invitation(done)); },
         .response = kInvitationJson,
         .method = "POST",
         .path = "/tenants/self/invitations/" FIRST "/resend"},
        {.api = "TenantsAPI",
         .operation = "getMembers",
         .call =
             [](Finish done) {
                 TenantsAPI::getMembers(std::vector<Uuid>{kFirst, kSecond}, 1, 2,
                                        decoded<TenantMemberResponsePaginatedList>(
                                            done, [](const TenantMemberResponsePaginatedList& list) {
                                                ASSERT_EQ(list.data->size(), 1u);
                                                const auto& member = list.data->at(0);
                                                EXPECT_EQ(member.user->firstName, "Ada");
                                                EXPECT_EQ(member.createdDate,
                                                          Date(std::chrono::milliseconds(1'705'320'000'123)));
                                            }));
             },
         .response = R"({"data":[{"id":")" SECOND R"(","user":{"id":")" FIRST R"(","first_name":"Ada"},
                         "role":"ADMIN","created_date":"2024-01-15T12:00:00.123Z"}]})",
         .method = "GET",
         .path = "/tenants/self/members",
         .query = {{"user_id", FIRST}, {"user_id", SECOND}, {"page", "1"}, {"size", "2"}}},
        {.api = "TenantsAPI",
         .operation = "getMembers",
         .call =
             [](Finish done) {
                 TenantsAPI::getMembers(std::vector<Uuid>{}, std::nullopt, 5,
                                        decoded<TenantMemberResponsePaginatedList>(done));
             },
         .response = "{}",
         .method = "GET",
         .path = "/tenants/self/members",
         .query = {{"size", "5"}}},
        {.api = "TenantsAPI",
         .operation = "deleteMember",
         .call = [](Finish done) { TenantsAPI::deleteMember(kSecond, decoded<Void>(done)); },
         .status = 204,
         .method = "DELETE",
         .path = "/tenants/self/members/" SECOND},
        {.api = "TenantsAPI",
         .operation = "getTenantUsageReport",
         .call = [=](Finish done) { TenantsAPI::getTenantUsageReport(report(done)); },
         .response = kReportJson,
         .method = "GET",
         .path = "/tenants/self/reports/usage"},
        {.api = "TenantsAPI",
         .operation = "getTenantOperationReport",
         .call = [=](Finish done) { TenantsAPI::getTenantOperationReport(report(done)); },
         .response = kReportJson,
         .method = "GET",
         .path = "/tenants/self/reports/operations"},
    };
    testing::expectEveryOperationHasARow<TenantsAPI>(rows, "TenantsAPI");
    walk(rows);
}

TEST_F(TenantsAPIWireTest, AnUnknownInvitationStatusInTheAnswerFailsTheCall) {
    answerWith(200, R"({"status":"REVOKED"})");
    std::optional<ErrorResponse> failure;
    bool finished = false;
    TenantsAPI::resendInvitation(
        kFirst, [&](std::optional<TenantInvitationResponse> value, std::optional<ErrorResponse> error) {
            EXPECT_FALSE(value);
            failure = std::move(error);
            finished = true;
        });
    ASSERT_TRUE(waitFor([&] { return finished; }));
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->code, 200);
    const auto* decoding = failure->errorAs<DecodingError>();
    ASSERT_NE(decoding, nullptr);
    EXPECT_EQ(decoding->kind, DecodingError::Kind::dataCorrupted);
    EXPECT_EQ(decoding->codingPath, anycodable::CodingPath{"status"});
}

}  // namespace
}  // namespace korvane
