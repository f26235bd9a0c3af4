#pragma once
// GetTenantMembers: the query of a member listing as a record. No operation takes it; the
// listing takes the same values as separate parameters.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <vector>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "platform/Uuid.hpp"

namespace korvane {

struct GetTenantMembers {
    std::optional<std::vector<platform::Uuid>> userId{};
    std::optional<int> page{};
    std::optional<int> size{};

    friend bool operator==(const GetTenantMembers&, const GetTenantMembers&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("user_id", &GetTenantMembers::userId), optional("page", &GetTenantMembers::page),
                      optional("size", &GetTenantMembers::size));
    }
};

}  // namespace korvane
