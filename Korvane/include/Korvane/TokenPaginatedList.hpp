#pragma once
// TokenPaginatedList: one page of tokens.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>
#include <vector>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "Korvane/Pagination.hpp"
#include "Korvane/Token.hpp"

namespace korvane {

struct TokenPaginatedList {
    std::optional<Pagination> pagination{};
    std::optional<std::vector<Token>> data{};

    friend bool operator==(const TokenPaginatedList&, const TokenPaginatedList&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("pagination", &TokenPaginatedList::pagination),
                      optional("data", &TokenPaginatedList::data));
    }
};

}  // namespace korvane
