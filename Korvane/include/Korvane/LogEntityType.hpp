#pragma once
// LogEntityType: a kind of entity that logs can be filtered by: its value and the name to show.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct LogEntityType {
    std::optional<std::string> displayName{};
    std::optional<std::string> value{};

    friend bool operator==(const LogEntityType&, const LogEntityType&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("display_name", &LogEntityType::displayName), optional("value", &LogEntityType::value));
    }
};

}  // namespace korvane
