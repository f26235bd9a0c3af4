#pragma once
// GetTenantInvitations: the query of an invitation listing as a record. No operation takes it;
// the listing takes the same values as separate parameters.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "Korvane/TenantInvitationStatus.hpp"

namespace korvane {

struct GetTenantInvitations {
    std::optional<TenantInvitationStatus> status{};
    std::optional<int> page{};
    std::optional<int> size{};

    friend bool operator==(const GetTenantInvitations&, const GetTenantInvitations&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("status", &GetTenantInvitations::status), optional("page", &GetTenantInvitations::page),
                      optional("size", &GetTenantInvitations::size));
    }
};

}  // namespace korvane
