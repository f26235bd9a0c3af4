#pragma once
// AccessRule: one rule of an application or a session: which containers it covers, under which
// conditions, with which permissions and data transform, and its priority among the rules.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>
#include <vector>

#include "Korvane/Condition.hpp"
#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct AccessRule {
    std::optional<std::string> description{};
    std::optional<int> priority{};
    std::optional<std::string> container{};
    std::optional<std::string> transform{};
    std::optional<std::vector<Condition>> conditions{};
    std::optional<std::vector<std::string>> permissions{};

    friend bool operator==(const AccessRule&, const AccessRule&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("description", &AccessRule::description), optional("priority", &AccessRule::priority),
                      optional("container", &AccessRule::container), optional("transform", &AccessRule::transform),
                      optional("conditions", &AccessRule::conditions),
                      optional("permissions", &AccessRule::permissions));
    }
};

}  // namespace korvane
