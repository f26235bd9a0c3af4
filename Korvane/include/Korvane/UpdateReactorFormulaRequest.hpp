#pragma once
// UpdateReactorFormulaRequest: the body that replaces a reactor formula. "type" and "name" are
// always on the wire; the rest only when present.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>
#include <vector>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "Korvane/ReactorFormulaConfiguration.hpp"
#include "Korvane/ReactorFormulaRequestParameter.hpp"

namespace korvane {

struct UpdateReactorFormulaRequest {
    std::string type{};
    std::string name{};
    std::optional<std::string> description{};
    std::optional<std::string> icon{};
    std::optional<std::string> code{};
    std::optional<std::vector<ReactorFormulaConfiguration>> configuration{};
    std::optional<std::vector<ReactorFormulaRequestParameter>> requestParameters{};

    friend bool operator==(const UpdateReactorFormulaRequest&, const UpdateReactorFormulaRequest&) = default;

    static constexpr auto jsonFields() {
        return fields(
            required("type", &UpdateReactorFormulaRequest::type), required("name", &UpdateReactorFormulaRequest::name),
            optional("description", &UpdateReactorFormulaRequest::description),
            optional("icon", &UpdateReactorFormulaRequest::icon), optional("code", &UpdateReactorFormulaRequest::code),
            optional("configuration", &UpdateReactorFormulaRequest::configuration),
            optional("request_parameters", &UpdateReactorFormulaRequest::requestParameters));
    }
};

}  // namespace korvane
