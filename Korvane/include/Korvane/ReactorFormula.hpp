#pragma once
// ReactorFormula: the template of a reactor: its code and the configuration and request
// parameters it expects.
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

struct ReactorFormula {
    std::optional<platform::Uuid> id{};
    std::optional<std::string> type{};
    std::optional<std::string> status{};
    std::optional<std::string> name{};
    std::optional<std::string> description{};
    std::optional<std::string> icon{};
    std::optional<std::string> code{};
    std::optional<platform::Uuid> createdBy{};
    std::optional<Date> createdAt{};
    std::optional<platform::Uuid> modifiedBy{};
    std::optional<Date> modifiedAt{};
    std::optional<std::vector<ReactorFormulaConfiguration>> configuration{};
    std::optional<std::vector<ReactorFormulaRequestParameter>> requestParameters{};

    friend bool operator==(const ReactorFormula&, const ReactorFormula&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("id", &ReactorFormula::id), optional("type", &ReactorFormula::type),
                      optional("status", &ReactorFormula::status), optional("name", &ReactorFormula::name),
                      optional("description", &ReactorFormula::description), optional("icon", &ReactorFormula::icon),
                      optional("code", &ReactorFormula::code), optional("created_by", &ReactorFormula::createdBy),
                      optional("created_at", &ReactorFormula::createdAt),
                      optional("modified_by", &ReactorFormula::modifiedBy),
                      optional("modified_at", &ReactorFormula::modifiedAt),
                      optional("configuration", &ReactorFormula::configuration),
                      optional("request_parameters", &ReactorFormula::requestParameters));
    }
};

}  // namespace korvane
