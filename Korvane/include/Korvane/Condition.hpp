#pragma once
// Condition: one test of an access rule: an attribute, an operator and a value. The member is
// `_operator` because "operator" is reserved; the key stays "operator".
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct Condition {
    std::optional<std::string> attribute{};
    std::optional<std::string> _operator{};
    std::optional<std::string> value{};

    friend bool operator==(const Condition&, const Condition&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("attribute", &Condition::attribute), optional("operator", &Condition::_operator),
                      optional("value", &Condition::value));
    }
};

}  // namespace korvane
