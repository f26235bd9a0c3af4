#pragma once
// ReactResponse: what a reactor run answers. Every field is open JSON, shaped by the reactor.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>

#include "AnyCodable/AnyCodable.hpp"
#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct ReactResponse {
    std::optional<anycodable::AnyCodable> tokens{};
    std::optional<anycodable::AnyCodable> raw{};
    std::optional<anycodable::AnyCodable> body{};
    std::optional<anycodable::AnyCodable> headers{};

    friend bool operator==(const ReactResponse&, const ReactResponse&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("tokens", &ReactResponse::tokens), optional("raw", &ReactResponse::raw),
                      optional("body", &ReactResponse::body), optional("headers", &ReactResponse::headers));
    }
};

}  // namespace korvane
