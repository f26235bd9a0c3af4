#pragma once
// Text helpers shared by the fields and formatters: UTF-8 and UTF-16 conversions, offsets
// between the two, and user-perceived characters.
//
// Strings are UTF-8 in the product and UTF-16 where the phone counts in UTF-16 units (text
// field ranges, regular-expression ranges). Ill-formed input never stops anything: each
// maximal ill-formed subsequence of UTF-8 and each unpaired surrogate of UTF-16 reads as one
// U+FFFD, the same way in every function here, so lengths and offsets agree with the
// conversions.
//
// Thread safety: all functions may be called from any thread.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

[[nodiscard]] std::u16string utf8ToUtf16(std::string_view utf8);
[[nodiscard]] std::string utf16ToUtf8(std::u16string_view utf16);

// The length of `utf8` in UTF-16 units, without converting it.
[[nodiscard]] std::size_t utf16Length(std::string_view utf8);

// The number of user-perceived characters (extended grapheme clusters): "e" followed by a
// combining acute accent is one, a flag made of two regional indicators is one, a family emoji
// joined with zero-width joiners is one.
[[nodiscard]] std::size_t characterCount(std::string_view utf8);
[[nodiscard]] std::size_t characterCount(std::u16string_view utf16);

// `utf8` split into its user-perceived characters, in order.
[[nodiscard]] std::vector<std::string> characters(std::string_view utf8);

// The byte offset in `utf8` of the UTF-16 offset `utf16Index`. Absent when the offset lies
// past the end or between the two halves of a surrogate pair.
[[nodiscard]] std::optional<std::size_t> utf8Offset(std::string_view utf8, std::size_t utf16Index);

// The UTF-16 offset of the byte offset `byteIndex`. Absent when it lies past the end or
// inside a sequence.
[[nodiscard]] std::optional<std::size_t> utf16Offset(std::string_view utf8, std::size_t byteIndex);

// The length in bytes (1 to 4) of the well-formed UTF-8 sequence that starts at byte `at`, or 0
// when none starts there: a stray continuation byte, a truncated sequence, an overlong form, a
// surrogate or a code point past U+10FFFF. For checks that refuse such text rather than read
// it as U+FFFD (JSON output, decoded URL components, bodies shown as text).
// REQUIRES: at < utf8.size().
[[nodiscard]] std::size_t utf8SequenceLength(std::string_view utf8, std::size_t at);

// Whether all of `utf8` is well-formed UTF-8 (see utf8SequenceLength); true for empty text.
[[nodiscard]] bool isValidUtf8(std::string_view utf8);

// Whether the first code point of `character` has a numeric type: decimal digits of any
// script ("7", "٤"), other digits ("²") and numerals ("½", "Ⅻ", "万"). False for empty text.
[[nodiscard]] bool isNumber(std::string_view character);

// The whole-number value of a character made of one code point with an integral numeric value
// ("7" is 7, "٤" is 4, "Ⅻ" is 12, "万" is 10000); absent for "½", for several code points and
// for anything else.
[[nodiscard]] std::optional<std::int64_t> wholeNumberValue(std::string_view character);

}  // namespace platform
