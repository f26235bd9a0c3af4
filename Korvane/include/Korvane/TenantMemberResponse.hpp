#pragma once
// TenantMemberResponse: one member of the tenant and their role. The creation time is
// "created_date" on the wire, unlike every other model's "created_at"; the vault answers it so.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "Korvane/User.hpp"
#include "platform/Uuid.hpp"

namespace korvane {

struct TenantMemberResponse {
    std::optional<platform::Uuid> id{};
    std::optional<platform::Uuid> tenantId{};
    std::optional<User> user{};
    std::optional<std::string> role{};
    std::optional<platform::Uuid> createdBy{};
    std::optional<Date> createdDate{};
    std::optional<platform::Uuid> modifiedBy{};
    std::optional<Date> modifiedAt{};

    friend bool operator==(const TenantMemberResponse&, const TenantMemberResponse&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("id", &TenantMemberResponse::id), optional("tenant_id", &TenantMemberResponse::tenantId),
                      optional("user", &TenantMemberResponse::user), optional("role", &TenantMemberResponse::role),
                      optional("created_by", &TenantMemberResponse::createdBy),
                      optional("created_date", &TenantMemberResponse::createdDate),
                      optional("modified_by", &TenantMemberResponse::modifiedBy),
                      optional("modified_at", &TenantMemberResponse::modifiedAt));
    }
};

}  // namespace korvane
