#pragma once
// ReactorFormulaRequestBody<For>: the body that creates a reactor formula
// (CreateReactorFormulaRequest) or replaces one (UpdateReactorFormulaRequest), see BodyFor.hpp.
// "type" and "name" are always on the wire; the rest only when present.
//
// Only a create body may choose the new formula's "id" (written first, when present); an update
// takes the id from its path, so there `id` is a NoField that never reaches the wire.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

#include "Korvane/BodyFor.hpp"
#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "Korvane/ReactorFormulaConfiguration.hpp"
#include "Korvane/ReactorFormulaRequestParameter.hpp"
#include "platform/Uuid.hpp"

namespace korvane {

template <BodyFor For>
struct ReactorFormulaRequestBody {
    std::conditional_t<For == BodyFor::create, std::optional<platform::Uuid>, NoField> id{};
    std::string type{};
    std::string name{};
    std::optional<std::string> description{};
    std::optional<std::string> icon{};
    std::optional<std::string> code{};
    std::optional<std::vector<ReactorFormulaConfiguration>> configuration{};
    std::optional<std::vector<ReactorFormulaRequestParameter>> requestParameters{};

    friend bool operator==(const ReactorFormulaRequestBody&, const ReactorFormulaRequestBody&) = default;

    static constexpr auto jsonFields() {
        using B = ReactorFormulaRequestBody;
        auto formula =
            fields(required("type", &B::type), required("name", &B::name), optional("description", &B::description),
                   optional("icon", &B::icon), optional("code", &B::code), optional("configuration", &B::configuration),
                   optional("request_parameters", &B::requestParameters));
        if constexpr (For == BodyFor::create) {
            return std::tuple_cat(fields(optional("id", &B::id)), formula);
        } else {
            return formula;
        }
    }
};

}  // namespace korvane
