#pragma once
// Card networks as the wallet backend names them.

#include <string_view>

namespace tovi {

// Case order is part of the hash of the card models (the case index is hashed).
enum class CardBrand { amex, mastercard, maestro, visa, visaElectron, discover, dinersClub, unknown };

// Exact, case-sensitive match of the backend's `brand` string; anything else is `unknown`.
[[nodiscard]] CardBrand cardBrandFromBackend(std::string_view brand);

// "American Express", "MasterCard", ... "Unknown".
[[nodiscard]] std::string_view displayName(CardBrand brand);

}  // namespace tovi
