#pragma once
// Element masks: what a user may type into a secure field, position by position.
//
// A mask is a list of positions. An expression position accepts one typed character that the
// expression finds a match in; a one-character string is a literal that the mask writes itself
// (a literal "_" instead replaces the next typed character). Integers and doubles never form a
// valid mask: they exist so that a host's malformed configuration can be represented, and
// refused by `isValidMask`.
//
// Usage:
//   ElementMask expiry{digit, digit, "/", digit, digit};   // digit = compileMaskRegex("[0-9]")
//   applyMask(expiry, "1225") == "12/25"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace platform {
class Regex;
}

namespace korvane::elements {

using RegexRef = std::shared_ptr<const platform::Regex>;
using MaskElement = std::variant<RegexRef, std::string, std::int64_t, double>;
using ElementMask = std::vector<MaskElement>;

// Compiles `pattern` for a mask, a validation or a transform.
// REQUIRES: the pattern compiles; a constant that does not is a programming fault and stops
// the process. Host patterns are compiled by the host.
[[nodiscard]] RegexRef compileElementRegex(std::string_view pattern);

// Every element is a non-null expression or a string of exactly one user-perceived character.
// The empty mask is valid.
[[nodiscard]] bool isValidMask(const ElementMask& mask);

// Applies `mask` to `text` (absent reads as empty): rejected characters are dropped and use no
// position, literals are written only while input remains, and input left over when the mask
// ends is discarded. Characters are user-perceived characters (a letter with its combining
// marks is one). An expression position accepts a character when the expression finds a match
// anywhere in it, except a digit position ("[0-9]"), which accepts a character only when the
// whole of it is one ASCII digit: "7" with a keycap mark is refused.
// REQUIRES: `isValidMask(mask)`.
[[nodiscard]] std::string applyMask(const ElementMask& mask, std::optional<std::string_view> text);

// The number of positions of `mask`, which is the character count of a text that fills it.
[[nodiscard]] inline std::size_t maskLength(const ElementMask& mask) {
    return mask.size();
}

}  // namespace korvane::elements
