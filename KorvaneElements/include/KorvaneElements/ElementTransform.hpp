#pragma once
// A transform: every match of `matcher` in the field text is replaced by `stringReplacement`
// (a template that may refer to groups as $1; absent means the empty string) to produce the
// value that leaves the element.

#include <optional>
#include <string>

#include "KorvaneElements/ElementMask.hpp"

namespace korvane::elements {

struct ElementTransform {
    RegexRef matcher;
    std::optional<std::string> stringReplacement;
};

// Applies `transform` to `text` (absent reads as empty); without a transform, the text itself.
// The replacement covers the first N UTF-16 units of the text, where N is the text's count of
// user-perceived characters: text after an emoji's extra units stays as typed.
[[nodiscard]] std::string applyElementTransform(const std::optional<ElementTransform>& transform,
                                                std::optional<std::string_view> text);

}  // namespace korvane::elements
