#pragma once
// CreateApplicationRequest: the body of an application creation. "expires_at" is text sent
// unchanged (an Application reads it back as a date).
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

struct CreateApplicationRequest {
    std::string name{};
    std::string type{};
    std::optional<std::string> expiresAt{};
    std::optional<std::vector<std::string>> permissions{};
    std::optional<std::vector<AccessRule>> rules{};

    friend bool operator==(const CreateApplicationRequest&, const CreateApplicationRequest&) = default;

    static constexpr auto jsonFields() {
        return fields(required("name", &CreateApplicationRequest::name),
                      required("type", &CreateApplicationRequest::type),
                      optional("expires_at", &CreateApplicationRequest::expiresAt),
                      optional("permissions", &CreateApplicationRequest::permissions),
                      optional("rules", &CreateApplicationRequest::rules));
    }
};

}  // namespace korvane
