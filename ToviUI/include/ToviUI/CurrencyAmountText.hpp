#pragma once
// The texts of the dollars entry field: a value shown when the field is filled from outside or
// left, and the text shown while a person types.
//
// Both operations share one process-wide currency formatter and change it before they use it,
// so its fraction digits and currency symbol carry over from one call to the next. Callers see
// that: typing "1" sets the symbol, after which "1." keeps it even though the path for texts
// with a fraction never sets one. The formatter follows the device's current locale.
//
// The number of decimal places is 2 when absent; a negative count is read as 0.
//
// Thread safety: main queue only (the shared formatter has no lock).

#include <optional>
#include <string>
#include <string_view>

#include "platform/NumberFormatter.hpp"

namespace tovi {

// The one currency formatter of the entry field, made on first use. Main queue only.
[[nodiscard]] platform::NumberFormatter& currencyInputFormatter();

// The final text for `value`. With `alwaysShowFractions` the text has exactly the places;
// otherwise a whole value shows no fraction (the minimum fraction digits are left as the last
// call set them). A present symbol replaces the locale's. Absent when the formatter gives none.
[[nodiscard]] std::optional<std::string> amountTextFromValue(std::optional<int> numberOfDecimalPlaces,
                                                             bool alwaysShowFractions,
                                                             const std::optional<std::string>& currencySymbol,
                                                             double value);

// The text to show for `text` as typed: only the digits 0 to 9 and the device's decimal
// separator count, a fraction shows as many digits as were typed (up to the places), and a
// just typed separator stays ("$12."). Absent when nothing counts.
[[nodiscard]] std::optional<std::string> amountTextFromTyping(std::optional<int> numberOfDecimalPlaces,
                                                              const std::optional<std::string>& currencySymbol,
                                                              std::string_view text);

}  // namespace tovi
