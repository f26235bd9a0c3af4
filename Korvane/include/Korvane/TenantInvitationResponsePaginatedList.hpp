#pragma once
// TenantInvitationResponsePaginatedList: one page of the tenant's invitations.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <vector>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "Korvane/Pagination.hpp"
#include "Korvane/TenantInvitationResponse.hpp"

namespace korvane {

struct TenantInvitationResponsePaginatedList {
    std::optional<Pagination> pagination{};
    std::optional<std::vector<TenantInvitationResponse>> data{};

    friend bool operator==(const TenantInvitationResponsePaginatedList&,
                           const TenantInvitationResponsePaginatedList&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("pagination", &TenantInvitationResponsePaginatedList::pagination),
                      optional("data", &TenantInvitationResponsePaginatedList::data));
    }
};

}  // namespace korvane
