#pragma once
// TokenizeAPI: turns a body of any shape into tokens in one call (the element library's
// "tokenize"). The body is sent as pretty-printed JSON; the answer is read as AnyCodable.
//
//     TokenizeAPI::tokenize.withRequestBuilder(AnyCodable::map({{"type", "card"}, {"data", ...}}));

#include <optional>

#include "AnyCodable/AnyCodable.hpp"
#include "Korvane/Operation.hpp"

namespace korvane {

class TokenizeAPI {
public:
    // clang-format off
    static constexpr auto tokenize = operation<anycodable::AnyCodable>(HTTPMethod::post, "/tokenize",
        body<std::optional<anycodable::AnyCodable>>());
    // clang-format on
};

}  // namespace korvane
