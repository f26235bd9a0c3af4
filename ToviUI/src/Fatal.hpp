#pragma once
// The messages of the wallet layer's fatal stops (amounts that do not fit), shared with the
// tests that expect them. The stop itself is platform::fatalStop.

#include <string_view>

namespace tovi::internal {

// The messages, shared with the tests that expect them.
inline constexpr std::string_view kNonFiniteDollars =
    "Fatal error: Double value cannot be converted to Int because it is either infinite or NaN";
inline constexpr std::string_view kDollarsAboveRange =
    "Fatal error: Double value cannot be converted to Int because the result would be greater than Int.max";
inline constexpr std::string_view kDollarsBelowRange =
    "Fatal error: Double value cannot be converted to Int because the result would be less than Int.min";
inline constexpr std::string_view kNotEnoughBits = "Fatal error: Not enough bits to represent the passed value";
inline constexpr std::string_view kUnexpectedNil =
    "Fatal error: Unexpectedly found nil while unwrapping an Optional value";

}  // namespace tovi::internal
