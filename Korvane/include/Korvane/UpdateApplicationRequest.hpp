#pragma once
// UpdateApplicationRequest: the body of an application update: "name" is always sent, the rest
// only when present.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>
#include <vector>

#include "Korvane/AccessRule.hpp"
#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct UpdateApplicationRequest {
    std::string name{};
    std::optional<std::vector<std::string>> permissions{};
    std::optional<std::vector<AccessRule>> rules{};

    friend bool operator==(const UpdateApplicationRequest&, const UpdateApplicationRequest&) = default;

    static constexpr auto jsonFields() {
        return fields(required("name", &UpdateApplicationRequest::name),
                      optional("permissions", &UpdateApplicationRequest::permissions),
                      optional("rules", &UpdateApplicationRequest::rules));
    }
};

}  // namespace korvane
