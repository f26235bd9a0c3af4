#pragma once
// TenantMemberResponsePaginatedList: one page of the tenant's members.

#include "Korvane/PaginatedList.hpp"
#include "Korvane/TenantMemberResponse.hpp"

namespace korvane {

using TenantMemberResponsePaginatedList = PaginatedList<TenantMemberResponse>;

}  // namespace korvane
