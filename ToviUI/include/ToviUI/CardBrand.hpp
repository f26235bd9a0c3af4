#pragma once
// Card networks as the wallet backend names them.

#include <string_view>

#include "ToviUI/ToviImageSource.hpp"

namespace tovi {

// One row per brand: row(case, the backend's `brand` string, display name, image). Rows are matched
// top to bottom; `unknown` is the fallback and has no backend name. Row order is the case order,
// which is part of the hash of the card models (the case index is hashed).
// clang-format off
#define TOVI_CARD_BRANDS(row) \
    row(amex, "amex", "American Express", americanExpress) \
    row(mastercard, "mastercard", "MasterCard", masterCard) \
    row(maestro, "maestro", "Maestro", maestro) \
    row(visa, "visa", "Visa", visa) \
    row(visaElectron, "visa electron", "Visa Electron", visaElectron) \
    row(discover, "discover", "Discover", discover) \
    row(dinersClub, "diners", "Diners Club", dinersClub) \
    row(unknown, "", "Unknown", placeholderCard)
// clang-format on

#define TOVI_CARD_BRAND_CASE(brand, ...) brand,
enum class CardBrand { TOVI_CARD_BRANDS(TOVI_CARD_BRAND_CASE) };
#undef TOVI_CARD_BRAND_CASE

// Exact, case-sensitive match of the backend's `brand` string; anything else is `unknown`.
[[nodiscard]] CardBrand cardBrandFromBackend(std::string_view brand);

// "American Express", "MasterCard", ... "Unknown".
[[nodiscard]] std::string_view displayName(CardBrand brand);

// The brand's card image; `unknown` shows the placeholder card.
[[nodiscard]] ToviImageSource imageSource(CardBrand brand);

}  // namespace tovi
