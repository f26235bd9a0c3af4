#pragma once
// GetTokens: the query of a token listing as a record. No operation takes it; listings take the
// same values as separate parameters.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct GetTokens {
    std::optional<std::vector<std::string>> type{};
    std::optional<std::vector<std::string>> id{};
    std::optional<std::map<std::string, std::string>> metadata{};
    std::optional<int> page{};
    std::optional<int> size{};

    friend bool operator==(const GetTokens&, const GetTokens&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("type", &GetTokens::type), optional("id", &GetTokens::id),
                      optional("metadata", &GetTokens::metadata), optional("page", &GetTokens::page),
                      optional("size", &GetTokens::size));
    }
};

}  // namespace korvane
