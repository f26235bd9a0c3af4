#pragma once
// A host's configuration of a text element. Every field is optional; an absent one clears what
// an earlier configuration set.

#include <optional>

#include "KorvaneElements/ElementMask.hpp"
#include "KorvaneElements/ElementTransform.hpp"
#include "KorvaneElements/ElementValueType.hpp"
#include "platform/view/Color.hpp"

namespace korvane::elements {

struct TextElementOptions {
    std::optional<ElementMask> mask{};
    std::optional<ElementTransform> transform{};
    // A value is valid when this expression has a first match in it.
    RegexRef validation{};
    std::optional<bool> enableCopy{};
    std::optional<platform::view::Color> copyIconColor{};
    // Absent means `string`.
    std::optional<ElementValueType> getValueType{};
};

}  // namespace korvane::elements
