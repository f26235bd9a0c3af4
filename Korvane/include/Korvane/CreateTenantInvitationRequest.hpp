#pragma once
// CreateTenantInvitationRequest: the body that invites someone to the tenant by email.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct CreateTenantInvitationRequest {
    std::string email{};

    friend bool operator==(const CreateTenantInvitationRequest&, const CreateTenantInvitationRequest&) = default;

    static constexpr auto jsonFields() { return fields(required("email", &CreateTenantInvitationRequest::email)); }
};

}  // namespace korvane
