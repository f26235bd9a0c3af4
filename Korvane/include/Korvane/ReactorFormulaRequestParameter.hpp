#pragma once
// ReactorFormulaRequestParameter: one parameter that a formula expects in a react request. The
// key is "optional"; the member is `_optional` so that it doesn't hide the `optional` of the
// field table.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct ReactorFormulaRequestParameter {
    std::string name{};
    std::optional<std::string> description{};
    std::string type{};
    std::optional<bool> _optional{};

    friend bool operator==(const ReactorFormulaRequestParameter&, const ReactorFormulaRequestParameter&) = default;

    static constexpr auto jsonFields() {
        return fields(required("name", &ReactorFormulaRequestParameter::name),
                      optional("description", &ReactorFormulaRequestParameter::description),
                      required("type", &ReactorFormulaRequestParameter::type),
                      optional("optional", &ReactorFormulaRequestParameter::_optional));
    }
};

}  // namespace korvane
