#pragma once
// ApplicationTemplate: a template that a new application can start from: its type, permissions and
// rules.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>
#include <vector>

#include "Korvane/AccessRule.hpp"
#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "platform/Uuid.hpp"

namespace korvane {

struct ApplicationTemplate {
    std::optional<platform::Uuid> id{};
    std::optional<std::string> name{};
    std::optional<std::string> description{};
    std::optional<std::string> applicationType{};
    std::optional<std::string> templateType{};
    std::optional<bool> isStarter{};
    std::optional<std::vector<AccessRule>> rules{};
    std::optional<std::vector<std::string>> permissions{};

    friend bool operator==(const ApplicationTemplate&, const ApplicationTemplate&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("id", &ApplicationTemplate::id), optional("name", &ApplicationTemplate::name),
                      optional("description", &ApplicationTemplate::description),
                      optional("application_type", &ApplicationTemplate::applicationType),
                      optional("template_type", &ApplicationTemplate::templateType),
                      optional("is_starter", &ApplicationTemplate::isStarter),
                      optional("rules", &ApplicationTemplate::rules),
                      optional("permissions", &ApplicationTemplate::permissions));
    }
};

}  // namespace korvane
