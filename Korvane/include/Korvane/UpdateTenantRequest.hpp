#pragma once
// UpdateTenantRequest: the body that renames a tenant and replaces its settings. "name" is
// always on the wire; "settings" only when present.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <map>
#include <optional>
#include <string>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct UpdateTenantRequest {
    std::string name{};
    std::optional<std::map<std::string, std::string>> settings{};

    friend bool operator==(const UpdateTenantRequest&, const UpdateTenantRequest&) = default;

    static constexpr auto jsonFields() {
        return fields(required("name", &UpdateTenantRequest::name),
                      optional("settings", &UpdateTenantRequest::settings));
    }
};

}  // namespace korvane
