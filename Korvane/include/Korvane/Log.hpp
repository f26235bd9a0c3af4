#pragma once
// Log: one audit log entry: who did what to which entity, and when.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "platform/Uuid.hpp"

namespace korvane {

struct Log {
    std::optional<platform::Uuid> tenantId{};
    std::optional<platform::Uuid> actorId{};
    std::optional<std::string> actorType{};
    std::optional<std::string> entityType{};
    std::optional<std::string> entityId{};
    std::optional<std::string> operation{};
    std::optional<std::string> message{};
    std::optional<Date> createdAt{};

    friend bool operator==(const Log&, const Log&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("tenant_id", &Log::tenantId), optional("actor_id", &Log::actorId),
                      optional("actor_type", &Log::actorType), optional("entity_type", &Log::entityType),
                      optional("entity_id", &Log::entityId), optional("operation", &Log::operation),
                      optional("message", &Log::message), optional("created_at", &Log::createdAt));
    }
};

}  // namespace korvane
