#pragma once
// Editing through a mask, the way a person expects a formatted field to behave: what a key
// or a paste may add at the caret, where the caret goes when the mask reformats the text, and
// what the delete key removes after a separator.
//
// Offsets are bytes of UTF-8 text; characters are user-perceived characters. "Filled"
// characters are the ones typed into a mask position, as opposed to separators the mask writes.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "KorvaneElements/ElementMask.hpp"

namespace korvane::elements::internal {

// The characters of `inserted` that `mask` takes when they replace bytes [from, to) of `text`,
// as many as the rest of the text leaves positions for; the others are dropped, and nothing
// of the rest is pushed out. Empty when the mask takes none of them.
[[nodiscard]] std::string admittedInsertion(const ElementMask& mask, std::string_view text, std::size_t from,
                                            std::size_t to, std::string_view inserted);

// Whether `mask` finds a position for every character of `text` it would take: none is cut off
// at the end.
[[nodiscard]] bool fitsMask(const ElementMask& mask, std::string_view text);

// Where the caret stands among the filled characters of a text.
struct CaretAnchor {
    std::vector<std::string> filled;  // the filled characters, in order
    std::size_t filledBefore = 0;     // how many of them precede the caret
    bool atEnd = false;               // the caret is at the end, and stays there
};

// The anchor of the caret at byte `caret` of `text`, which need not be formatted yet.
[[nodiscard]] CaretAnchor anchorCaret(const ElementMask& mask, std::string_view text, std::size_t caret);

// The caret's byte offset in `masked`, an output of `mask` that replaces the anchored text:
// after the same filled character as before. Characters added or removed on one side of the
// caret only (a separator, a leading "0", a cut end) don't move it off that character. The
// anchor moves on to `masked`.
[[nodiscard]] std::size_t followCaret(CaretAnchor& anchor, const ElementMask& mask, std::string_view masked);

// When a separator written by `mask` stands just before byte `caret` of `masked`, the bytes the
// delete key removes instead: the filled character before the separator (an empty range when
// there is none). Absent when no separator precedes the caret.
[[nodiscard]] std::optional<std::pair<std::size_t, std::size_t>> deletionBeforeSeparator(const ElementMask& mask,
                                                                                         std::string_view masked,
                                                                                         std::size_t caret);

}  // namespace korvane::elements::internal
