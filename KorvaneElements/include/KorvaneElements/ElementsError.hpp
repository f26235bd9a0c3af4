#pragma once
// ElementsError: every error a completion of `KorvaneElements` can receive.
//
//   TokenizingError / ProxyError / HttpClientError   raised by the element library itself
//   korvane::ErrorResponse                           a vault call failed; passed on unchanged
//   anycodable::DecodingError                        a proxy or HTTP helper response body is
//                                                    not a JSON object or array

#include <string>
#include <variant>

#include "AnyCodable/CodingError.hpp"
#include "Korvane/ErrorResponse.hpp"
#include "KorvaneElements/HttpClientError.hpp"
#include "KorvaneElements/ProxyError.hpp"
#include "KorvaneElements/TokenizingError.hpp"

namespace korvane::elements {

using ElementsError =
    std::variant<TokenizingError, ProxyError, HttpClientError, korvane::ErrorResponse, anycodable::DecodingError>;

// One line for logs. Never holds a request body; a vault error's response body is left out.
[[nodiscard]] std::string describe(const ElementsError& error);

}  // namespace korvane::elements
