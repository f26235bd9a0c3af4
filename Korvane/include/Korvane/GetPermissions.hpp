#pragma once
// GetPermissions: the query of a permission listing as a record (no operation takes it).
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct GetPermissions {
    std::optional<std::string> applicationType{};

    friend bool operator==(const GetPermissions&, const GetPermissions&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("application_type", &GetPermissions::applicationType));
    }
};

}  // namespace korvane
