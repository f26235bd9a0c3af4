#pragma once
// The fatal stops of the wallet layer: the message goes to standard error, then the process
// aborts. Only for programming faults the wallet cannot go on from (amounts that do not fit).

#include <string_view>

namespace tovi::internal {

[[noreturn]] void fatalStop(std::string_view message);

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
