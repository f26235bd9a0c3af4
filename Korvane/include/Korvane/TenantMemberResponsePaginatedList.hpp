#pragma once
// TenantMemberResponsePaginatedList: one page of the tenant's members.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <vector>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "Korvane/Pagination.hpp"
#include "Korvane/TenantMemberResponse.hpp"

namespace korvane {

struct TenantMemberResponsePaginatedList {
    std::optional<Pagination> pagination{};
    std::optional<std::vector<TenantMemberResponse>> data{};

    friend bool operator==(const TenantMemberResponsePaginatedList&,
                           const TenantMemberResponsePaginatedList&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("pagination", &TenantMemberResponsePaginatedList::pagination),
                      optional("data", &TenantMemberResponsePaginatedList::data));
    }
};

}  // namespace korvane
