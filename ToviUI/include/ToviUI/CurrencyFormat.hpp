#pragma once
// Money conversions and the two currency formats.
//
// Two formats exist and must not be mixed:
// - `formatCurrencyAmount` for every balance, bucket and button text: follows the device's
//   current locale (a new formatter per call, so a locale change shows at once).
// - `usdAmountFormatter` for every validation message and bonus hint: always "en_US" with two
//   fraction digits, whatever the device's locale.

#include <cstdint>
#include <string>

#include "platform/NumberFormatter.hpp"

namespace tovi {

// Currency text of `dollars` in the current locale, with grouping. When the platform gives no
// text, "$%0.2f" of the absolute value, or "-$%0.2f" when the sign bit is set (so -0.0 is
// "-$0.00").
[[nodiscard]] std::string formatCurrencyAmount(double dollars);

// The process-wide "en_US" currency formatter with exactly two fraction digits, made on
// first use. Main queue only.
[[nodiscard]] const platform::NumberFormatter& usdAmountFormatter();

// `usdAmountFormatter` applied to `dollars`. A formatter that gives no text is a fatal stop.
[[nodiscard]] std::string formatUsdAmount(double dollars);

// Dollars to cents: `dollars * 100.0` truncated towards zero (1.15 gives 114). A product that
// is infinite, not a number or outside the signed 64-bit range is a fatal stop.
[[nodiscard]] std::int64_t dollarsToCents(double dollars);

// Narrows cents to the 32 bits of the backend's requests. Out of range is a fatal stop.
[[nodiscard]] std::int32_t centsToInt32(std::int64_t cents);

// `Double(cents) / 100.0`.
[[nodiscard]] constexpr double centsToDollars(std::int64_t cents) {
    return static_cast<double>(cents) / 100.0;
}

}  // namespace tovi
