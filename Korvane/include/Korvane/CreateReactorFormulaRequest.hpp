#pragma once
// CreateReactorFormulaRequest: the body that creates a reactor formula. "type" and "name" are
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
#include "platform/Uuid.hpp"

namespace korvane {

struct CreateReactorFormulaRequest {
    std::optional<platform::Uuid> id{};
    std::string type{};
    std::string name{};
    std::optional<std::string> description{};
    std::optional<std::string> icon{};
    std::optional<std::string> code{};
    std::optional<std::vector<ReactorFormulaConfiguration>> configuration{};
    std::optional<std::vector<ReactorFormulaRequestParameter>> requestParameters{};

    friend bool operator==(const CreateReactorFormulaRequest&, const CreateReactorFormulaRequest&) = default;

    static constexpr auto jsonFields() {
        return fields(
            optional("id", &CreateReactorFormulaRequest::id), required("type", &CreateReactorFormulaRequest::type),
            required("name", &CreateReactorFormulaRequest::name),
            optional("description", &CreateReactorFormulaRequest::description),
            optional("icon", &CreateReactorFormulaRequest::icon), optional("code", &CreateReactorFormulaRequest::code),
            optional("configuration", &CreateReactorFormulaRequest::configuration),
            optional("request_parameters", &CreateReactorFormulaRequest::requestParameters));
    }
};

}  // namespace korvane
