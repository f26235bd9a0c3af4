#pragma once
// Tenant: the tenant that the calling API key belongs to, with its settings.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <map>
#include <optional>
#include <string>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "platform/Uuid.hpp"

namespace korvane {

struct Tenant {
    std::optional<platform::Uuid> id{};
    std::optional<platform::Uuid> ownerId{};
    std::optional<std::string> name{};
    std::optional<platform::Uuid> createdBy{};
    std::optional<Date> createdAt{};
    std::optional<platform::Uuid> modifiedBy{};
    std::optional<Date> modifiedAt{};
    std::optional<std::map<std::string, std::string>> settings{};

    friend bool operator==(const Tenant&, const Tenant&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("id", &Tenant::id), optional("owner_id", &Tenant::ownerId),
                      optional("name", &Tenant::name), optional("created_by", &Tenant::createdBy),
                      optional("created_at", &Tenant::createdAt), optional("modified_by", &Tenant::modifiedBy),
                      optional("modified_at", &Tenant::modifiedAt), optional("settings", &Tenant::settings));
    }
};

}  // namespace korvane
