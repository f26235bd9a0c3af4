#pragma once
// CreditCardBrand: the brand as the secure card number field reports it while a card is typed.
// Its raw value, which is also its identity in lists, is the case name.

#include <optional>
#include <string_view>

namespace tovi {

// clang-format off
#define TOVI_CREDIT_CARD_BRANDS(row) \
    row(americanExpress) row(dinersClub) row(discover) row(maestro) row(mastercard) row(visa) row(elo) \
    row(hiper) row(hipercard) row(jcb) row(mir) row(unionPay) row(empty) row(unknown)
// clang-format on

#define TOVI_CREDIT_CARD_BRAND_CASE(brand) brand,
enum class CreditCardBrand { TOVI_CREDIT_CARD_BRANDS(TOVI_CREDIT_CARD_BRAND_CASE) };
#undef TOVI_CREDIT_CARD_BRAND_CASE

// "americanExpress", ... "unknown".
[[nodiscard]] std::string_view rawValue(CreditCardBrand brand);
// The brand whose raw value is exactly `raw`.
[[nodiscard]] std::optional<CreditCardBrand> creditCardBrand(std::string_view raw);

}  // namespace tovi
