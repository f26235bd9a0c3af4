#pragma once
// SearchTokensRequest: the body of a token search.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct SearchTokensRequest {
    std::optional<std::string> query{};
    std::optional<int> page{};
    std::optional<int> size{};

    friend bool operator==(const SearchTokensRequest&, const SearchTokensRequest&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("query", &SearchTokensRequest::query), optional("page", &SearchTokensRequest::page),
                      optional("size", &SearchTokensRequest::size));
    }
};

}  // namespace korvane
