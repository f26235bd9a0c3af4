#pragma once
// ElementEvent: what an element tells its host. Types in use: "ready", "textChange", "focus",
// "blur" and "maskChange". Details carry only the card brand, bin and last four digits of a
// complete number, never a value.
//
// The JSON form has the keys "type", "complete", "empty", "valid", "maskSatisfied" and
// "details" in that order; each detail has "type" and "message".

#include <string>
#include <vector>

#include "AnyCodable/Value.hpp"
#include "platform/Result.hpp"

namespace korvane::elements {

struct ElementEventDetails {
    std::string type;
    std::string message;

    friend bool operator==(const ElementEventDetails&, const ElementEventDetails&) = default;
};

struct ElementEvent {
    enum class ConversionError { invalidJSON };

    std::string type;
    bool complete = false;
    bool empty = false;
    bool valid = false;
    bool maskSatisfied = false;
    std::vector<ElementEventDetails> details;

    // The encoded JSON text.
    [[nodiscard]] platform::Result<std::string, ConversionError> encode() const;
    // The event as a JSON object with the keys of `encode`; `invalidJSON` when a string is not
    // valid UTF-8, so that the object is exactly what encoding and parsing back would give.
    [[nodiscard]] platform::Result<anycodable::Map, ConversionError> toDictionary() const;

    friend bool operator==(const ElementEvent&, const ElementEvent&) = default;
};

}  // namespace korvane::elements
