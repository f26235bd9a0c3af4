#pragma once
// Reading JSON text into a dynamic Value.
//
// The type tests run in the phone's order, first match wins: null gives Null; true/false a
// bool (never the integer 1); a number that is integral and fits a signed 64-bit integer an
// Int (so "1.0" and "1e2" are Ints, as the phone's decoder accepts them as Int first); one
// that is integral and fits only unsigned 64 bits a UInt; any other finite number a double;
// strings, arrays and objects their own kinds. On a repeated object key the last value wins,
// in the position of the first.
//
// Failures are values (dataCorrupted): malformed JSON, invalid UTF-8, a number outside the
// double range, nesting deeper than `maxDepth`. The error says what kind of failure and at
// which byte offset, never what was read, and has no coding path (keys are input too). Nothing
// throws; the parser is not recursive, so hostile nesting can't exhaust the stack.
//
// Thread safety: reentrant.

#include <cstddef>
#include <expected>
#include <string_view>

#include "AnyCodable/CodingError.hpp"
#include "AnyCodable/Value.hpp"

namespace anycodable {

struct ReadOptions {
    // Arrays and objects nested deeper than this are refused, as the phone's parser refuses
    // documents nested more than 512 levels.
    std::size_t maxDepth = 512;
};

[[nodiscard]] std::expected<Value, DecodingError> readJson(std::string_view text, ReadOptions options = {});

}  // namespace anycodable
