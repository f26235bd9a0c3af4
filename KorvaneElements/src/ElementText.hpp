#pragma once
// Text helpers of the elements: characters are user-perceived characters (grapheme clusters),
// as the phone's strings count them, and integers are read as the phone reads them.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace korvane::elements::internal {

// `text` split into characters; the views point into `text`. ASCII text (the usual case: card
// digits) is split without consulting the Unicode tables.
[[nodiscard]] std::vector<std::string_view> characters(std::string_view text);

[[nodiscard]] std::size_t characterCount(std::string_view text);

// The text of the first `n` characters (all of them when there are fewer).
[[nodiscard]] std::string_view joinPrefix(const std::vector<std::string_view>& characters, std::size_t n);

// A decimal 64-bit signed integer: an optional "+" or "-", then one or more ASCII digits and
// nothing else. Absent on anything else or on overflow.
[[nodiscard]] std::optional<std::int64_t> parseInt64(std::string_view text);

}  // namespace korvane::elements::internal
