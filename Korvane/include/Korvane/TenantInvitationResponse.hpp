#pragma once
// TenantInvitationResponse: an invitation to the tenant and where it stands.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "Korvane/TenantInvitationStatus.hpp"
#include "platform/Uuid.hpp"

namespace korvane {

struct TenantInvitationResponse {
    std::optional<platform::Uuid> id{};
    std::optional<platform::Uuid> tenantId{};
    std::optional<std::string> email{};
    std::optional<TenantInvitationStatus> status{};
    std::optional<Date> expiresAt{};
    std::optional<platform::Uuid> createdBy{};
    std::optional<Date> createdAt{};
    std::optional<platform::Uuid> modifiedBy{};
    std::optional<Date> modifiedAt{};

    friend bool operator==(const TenantInvitationResponse&, const TenantInvitationResponse&) = default;

    static constexpr auto jsonFields() {
        return fields(
            optional("id", &TenantInvitationResponse::id), optional("tenant_id", &TenantInvitationResponse::tenantId),
            optional("email", &TenantInvitationResponse::email), optional("status", &TenantInvitationResponse::status),
            optional("expires_at", &TenantInvitationResponse::expiresAt),
            optional("created_by", &TenantInvitationResponse::createdBy),
            optional("created_at", &TenantInvitationResponse::createdAt),
            optional("modified_by", &TenantInvitationResponse::modifiedBy),
            optional("modified_at", &TenantInvitationResponse::modifiedAt));
    }
};

}  // namespace korvane
