#pragma once
// ReactorFormulaConfiguration: one configuration value that a formula expects of its reactors.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct ReactorFormulaConfiguration {
    std::string name{};
    std::optional<std::string> description{};
    std::string type{};

    friend bool operator==(const ReactorFormulaConfiguration&, const ReactorFormulaConfiguration&) = default;

    static constexpr auto jsonFields() {
        return fields(required("name", &ReactorFormulaConfiguration::name),
                      optional("description", &ReactorFormulaConfiguration::description),
                      required("type", &ReactorFormulaConfiguration::type));
    }
};

}  // namespace korvane
