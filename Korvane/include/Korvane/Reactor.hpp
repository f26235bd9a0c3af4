#pragma once
// Reactor: a server-side function the vault runs on tokens, built from a formula and
// configured for one tenant.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <map>
#include <optional>
#include <string>

#include "Korvane/Application.hpp"
#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "Korvane/ReactorFormula.hpp"
#include "platform/Uuid.hpp"

namespace korvane {

struct Reactor {
    std::optional<platform::Uuid> id{};
    std::optional<platform::Uuid> tenantId{};
    std::optional<std::string> name{};
    std::optional<ReactorFormula> formula{};
    std::optional<Application> application{};
    std::optional<platform::Uuid> createdBy{};
    std::optional<Date> createdAt{};
    std::optional<platform::Uuid> modifiedBy{};
    std::optional<Date> modifiedAt{};
    std::optional<std::map<std::string, std::string>> configuration{};

    friend bool operator==(const Reactor&, const Reactor&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("id", &Reactor::id), optional("tenant_id", &Reactor::tenantId),
                      optional("name", &Reactor::name), optional("formula", &Reactor::formula),
                      optional("application", &Reactor::application), optional("created_by", &Reactor::createdBy),
                      optional("created_at", &Reactor::createdAt), optional("modified_by", &Reactor::modifiedBy),
                      optional("modified_at", &Reactor::modifiedAt),
                      optional("configuration", &Reactor::configuration));
    }
};

}  // namespace korvane
