#pragma once
// GetReactors: the query of a reactor listing as a record. No operation takes it; the listing
// takes the same values as separate parameters.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>
#include <vector>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "platform/Uuid.hpp"

namespace korvane {

struct GetReactors {
    std::optional<std::vector<platform::Uuid>> id{};
    std::optional<std::string> name{};
    std::optional<int> page{};
    std::optional<int> size{};

    friend bool operator==(const GetReactors&, const GetReactors&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("id", &GetReactors::id), optional("name", &GetReactors::name),
                      optional("page", &GetReactors::page), optional("size", &GetReactors::size));
    }
};

}  // namespace korvane
