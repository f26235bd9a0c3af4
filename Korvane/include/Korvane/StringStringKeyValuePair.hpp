#pragma once
// StringStringKeyValuePair: a key and a value, both text. Used by no operation of this client.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct StringStringKeyValuePair {
    std::string key{};
    std::string value{};

    friend bool operator==(const StringStringKeyValuePair&, const StringStringKeyValuePair&) = default;

    static constexpr auto jsonFields() {
        return fields(required("key", &StringStringKeyValuePair::key),
                      required("value", &StringStringKeyValuePair::value));
    }
};

}  // namespace korvane
