#pragma once
// TokenizeAPI: turns a body of any shape into tokens in one call (the element library's
// "tokenize"). The body is sent as pretty-printed JSON; the answer is read as AnyCodable.
//
//     TokenizeAPI::tokenize.withRequestBuilder(AnyCodable::map({{"type", "card"}, {"data", ...}}));

#include <optional>

#include "AnyCodable/AnyCodable.hpp"
#include "Korvane/OperationTable.hpp"

namespace korvane {

// clang-format off
#define KORVANE_TOKENIZE_API(row) \
    row(tokenize, operation<anycodable::AnyCodable>(HTTPMethod::post, "/tokenize", \
        body<std::optional<anycodable::AnyCodable>>()))
// clang-format on

class TokenizeAPI {
public:
    KORVANE_OPERATIONS(KORVANE_TOKENIZE_API)
};

#undef KORVANE_TOKENIZE_API

}  // namespace korvane
