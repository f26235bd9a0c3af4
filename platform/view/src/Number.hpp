#pragma once
// Deterministic number text for generated markup: at most three decimals, no trailing zeros,
// no negative zero.

#include <string>

namespace platform::view::internal {

[[nodiscard]] std::string number(double value);
void appendNumber(std::string& out, double value);

}  // namespace platform::view::internal
