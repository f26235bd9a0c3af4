#pragma once
// Permission: a permission that applications can be granted, and the application types that may
// hold it.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>
#include <vector>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct Permission {
    std::optional<std::string> type{};
    std::optional<std::string> description{};
    std::optional<std::vector<std::string>> applicationTypes{};

    friend bool operator==(const Permission&, const Permission&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("type", &Permission::type), optional("description", &Permission::description),
                      optional("application_types", &Permission::applicationTypes));
    }
};

}  // namespace korvane
