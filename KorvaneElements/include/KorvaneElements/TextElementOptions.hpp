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

    // What a card element hands its base: the element keeps its own mask, transform and rules,
    // so only the host's copy settings pass through, and the value is always read as a string.
    [[nodiscard]] static TextElementOptions copyOnly(std::optional<bool> enableCopy,
                                                     std::optional<platform::view::Color> copyIconColor) {
        return TextElementOptions{
            .enableCopy = enableCopy, .copyIconColor = copyIconColor, .getValueType = ElementValueType::string};
    }
};

}  // namespace korvane::elements
