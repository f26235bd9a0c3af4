#pragma once
// Element references inside request bodies.
//
// A host builds the body of `KorvaneElements::tokenize` (and of `createToken`, `proxy` and the
// HTTP helpers) as an `anycodable::Map` in which an element stands where its value will go:
//
//     using korvane::elements::elementValue;
//     anycodable::Map card{{"number", elementValue(numberField)},
//                          {"expiration_month", elementValue(expiryField->month())}};
//     anycodable::Map body{{"type", "card"}, {"data", card}};
//
// The value is read only inside the library, at the moment the request is built. A body value
// that holds an element has no JSON form of its own: if it is ever written unreplaced (for
// example from inside an array, which the replacement does not enter), the encoder refuses it
// rather than write the value. Its description is "<element>" and the element id, never the
// value.
//
// Thread safety: the body value only holds the element; reading it follows the element's own
// rules (main queue).

#include <memory>

#include "AnyCodable/Value.hpp"
#include "KorvaneElements/ElementReferenceProtocol.hpp"

namespace korvane::elements {

// A body value that stands for `element`. Null gives the empty value.
[[nodiscard]] anycodable::Value elementValue(std::shared_ptr<ElementReferenceProtocol> element);

// The element a body value stands for, or null when it holds anything else.
[[nodiscard]] std::shared_ptr<ElementReferenceProtocol> elementReferenceOf(const anycodable::Value& value);

}  // namespace korvane::elements
