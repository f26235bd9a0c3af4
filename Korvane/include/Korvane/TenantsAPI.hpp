#pragma once
// TenantsAPI: the tenant that the calling API key belongs to ("/tenants/self"), its members,
// invitations and reports; one row per operation (see OperationTable.hpp and Operation.hpp
// for the two call forms each row gives).
//
//     auto builder = TenantsAPI::getInvitations.withRequestBuilder(TenantInvitationStatus::pending,
//                                                                  std::nullopt, std::nullopt);
//     TenantsAPI::callGet([](std::optional<Tenant> tenant, std::optional<ErrorResponse> error) {});
//
// Query and path values: the "status" item is the enum's raw value ("PENDING"); "user_id"
// gives one item per id; UUIDs go in their upper-case form. getTenantOperationReport answers
// the same model as the usage report. `delete_` is the operation named "delete".
//
// Thread safety: rows are constants; both forms may be called from any thread.

#include <vector>

#include "Korvane/CreateTenantInvitationRequest.hpp"
#include "Korvane/OperationTable.hpp"
#include "Korvane/Tenant.hpp"
#include "Korvane/TenantInvitationResponse.hpp"
#include "Korvane/TenantInvitationResponsePaginatedList.hpp"
#include "Korvane/TenantInvitationStatus.hpp"
#include "Korvane/TenantMemberResponsePaginatedList.hpp"
#include "Korvane/TenantUsageReport.hpp"
#include "Korvane/UpdateTenantRequest.hpp"
#include "platform/Uuid.hpp"

namespace korvane {

// clang-format off
#define KORVANE_TENANTS_API(row) \
    row(callGet, operation<Tenant>(HTTPMethod::get, "/tenants/self")) \
    row(update, operation<Tenant>(HTTPMethod::put, "/tenants/self", \
        body<UpdateTenantRequest>())) \
    row(delete_, operation<Void>(HTTPMethod::delete_, "/tenants/self")) \
    row(createInvitation, operation<TenantInvitationResponse>(HTTPMethod::post, "/tenants/self/invitations", \
        body<CreateTenantInvitationRequest>())) \
    row(getInvitations, operation<TenantInvitationResponsePaginatedList>(HTTPMethod::get, "/tenants/self/invitations", \
        query<TenantInvitationStatus>("status"), query<int>("page"), query<int>("size"))) \
    row(deleteInvitation, operation<Void>(HTTPMethod::delete_, "/tenants/self/invitations/{invitationId}", \
        path<Uuid>("invitationId"))) \
    row(resendInvitation, operation<TenantInvitationResponse>(HTTPMethod::post, \
        "/tenants/self/invitations/{invitationId}/resend", path<Uuid>("invitationId"))) \
    row(getMembers, operation<TenantMemberResponsePaginatedList>(HTTPMethod::get, "/tenants/self/members", \
        query<Uuids>("user_id"), query<int>("page"), query<int>("size"))) \
    row(deleteMember, operation<Void>(HTTPMethod::delete_, "/tenants/self/members/{memberId}", \
        path<Uuid>("memberId"))) \
    row(getTenantUsageReport, operation<TenantUsageReport>(HTTPMethod::get, "/tenants/self/reports/usage")) \
    row(getTenantOperationReport, operation<TenantUsageReport>(HTTPMethod::get, "/tenants/self/reports/operations"))
// clang-format on

class TenantsAPI {
    using Uuid = platform::Uuid;
    using Uuids = std::vector<platform::Uuid>;

public:
    KORVANE_OPERATIONS(KORVANE_TENANTS_API)
};

#undef KORVANE_TENANTS_API

}  // namespace korvane
