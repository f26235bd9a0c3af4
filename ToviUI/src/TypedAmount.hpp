#pragma once
// How the dollars entry field reads a typed text: which characters count, where the fraction
// starts and which number it is. Shared by the shown text and the field's change decision.
// Main queue only, like the field.

#include <string>
#include <string_view>
#include <vector>

namespace tovi::internal {

// The device's decimal separator, "." when its locale has none.
[[nodiscard]] std::string deviceDecimalSeparator();

// `text` reduced to the digits 0 to 9 and `separator`. Digits of other scripts ("٣") and
// the grouping separator do not count.
[[nodiscard]] std::string numericText(std::string_view text, std::string_view separator);

// `text` split at every `separator`, empty pieces kept: "12." gives "12" and "".
[[nodiscard]] std::vector<std::string_view> splitAt(std::string_view text, std::string_view separator);

// The number of a numeric text: every "," read as ".", then the whole text read as a decimal
// number in the C locale. 0 when it is no number (a lone "."), or too large for a double.
[[nodiscard]] double typedNumber(std::string_view numeric);

}  // namespace tovi::internal
