#pragma once
// GetReactorFormulas: the query of a reactor formula listing as a record. No operation takes it;
// the listing takes the same values as separate parameters.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct GetReactorFormulas {
    std::optional<std::string> name{};
    std::optional<int> page{};
    std::optional<int> size{};

    friend bool operator==(const GetReactorFormulas&, const GetReactorFormulas&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("name", &GetReactorFormulas::name), optional("page", &GetReactorFormulas::page),
                      optional("size", &GetReactorFormulas::size));
    }
};

}  // namespace korvane
