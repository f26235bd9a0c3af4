#pragma once
// Card networks as the wallet backend names them.

#include <string_view>

namespace tovi {

// One row per brand: row(case, the backend's `brand` string, display name). Rows are matched
// top to bottom; `unknown` is the fallback and has no backend name. Row order is the case order,
// which is part of the hash of the card models (the case index is hashed).
// clang-format off
#define TOVI_CARD_BRANDS(row) \
    row(amex, "amex", "American Express") \
    row(mastercard, "mastercard", "MasterCard") \
    row(maestro, "maestro", "Maestro") \
    row(visa, "visa", "Visa") \
    row(visaElectron, "visa electron", "Visa Electron") \
    row(discover, "discover", "Discover") \
    row(dinersClub, "diners", "Diners Club") \
    row(unknown, "", "Unknown")
// clang-format on

#define TOVI_CARD_BRAND_CASE(brand, ...) brand,
enum class CardBrand { TOVI_CARD_BRANDS(TOVI_CARD_BRAND_CASE) };
#undef TOVI_CARD_BRAND_CASE

// Exact, case-sensitive match of the backend's `brand` string; anything else is `unknown`.
[[nodiscard]] CardBrand cardBrandFromBackend(std::string_view brand);

// "American Express", "MasterCard", ... "Unknown".
[[nodiscard]] std::string_view displayName(CardBrand brand);

}  // namespace tovi
