#pragma once
// TenantInvitationResponsePaginatedList: one page of the tenant's invitations.

#include "Korvane/PaginatedList.hpp"
#include "Korvane/TenantInvitationResponse.hpp"

namespace korvane {

using TenantInvitationResponsePaginatedList = PaginatedList<TenantInvitationResponse>;

}  // namespace korvane
