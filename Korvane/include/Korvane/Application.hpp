#pragma once
// Application: an application of the vault: an API key with its permissions and access rules.
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

struct Application {
    std::optional<platform::Uuid> id{};
    std::optional<platform::Uuid> tenantId{};
    std::optional<std::string> name{};
    std::optional<std::string> key{};
    std::optional<std::string> type{};
    std::optional<platform::Uuid> createdBy{};
    std::optional<Date> createdAt{};
    std::optional<platform::Uuid> modifiedBy{};
    std::optional<Date> modifiedAt{};
    std::optional<Date> expiresAt{};
    std::optional<std::vector<std::string>> permissions{};
    std::optional<std::vector<AccessRule>> rules{};

    friend bool operator==(const Application&, const Application&) = default;

    static constexpr auto jsonFields() {
        return fields(
            optional("id", &Application::id), optional("tenant_id", &Application::tenantId),
            optional("name", &Application::name), optional("key", &Application::key),
            optional("type", &Application::type), optional("created_by", &Application::createdBy),
            optional("created_at", &Application::createdAt), optional("modified_by", &Application::modifiedBy),
            optional("modified_at", &Application::modifiedAt), optional("expires_at", &Application::expiresAt),
            optional("permissions", &Application::permissions), optional("rules", &Application::rules));
    }
};

}  // namespace korvane
