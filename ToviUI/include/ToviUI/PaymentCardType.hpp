#pragma once
// PaymentCardType: a standalone classifier of card numbers by network, kept as public surface
// for hosts (the wallet's own views use CardBrand, and the secure card field has its own
// catalogue).
//
//     paymentCardType("4175001234567")          // visaElectron: it stands before visa
//     suggestedTypeForCardNumber("4242")       // visa, from the prefix patterns
//
// Patterns must cover the whole number; `\d` takes any Unicode decimal digit, as the phone's
// regular expressions do.
//
// Thread safety: none; classify and reorder on the main thread.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tovi {

// One row per type: row(case, raw value, whole-number pattern, prefix pattern).
// clang-format off
#define TOVI_PAYMENT_CARD_TYPES(row) \
    row(amex, "American Express", R"(^3[47]\d{13}$)", R"(^3[47][0-9]*$)") \
    row(mastercard, "MasterCard", \
        R"(^((5[1-5]\d{4}|677189)\d{10})|((222[1-9]|22[3-9]\d|2[3-6]\d{2}|27[0-1]\d|2720)\d{12})$)", \
        R"(^((5[1-5]|677189)\d*)|((222[1-9]|22[3-9]\d|2[3-6]\d{2}|27[0-1]\d|2720)\d*)$)") \
    row(maestro, "Maestro", R"(^(5018|5020|5038|6304|670[38]|6759|676[1-3])\d{12}(?:\d{3})?$)", \
        R"(^(5018|5020|5038|6304|670[38]|6759|676[1-3])\d*$)") \
    row(visa, "Visa", R"(^4\d{12}(?:\d{3})?$)", R"(^4\d*$)") \
    row(visaElectron, "Visa Electron", R"(^(417500\d{7}|4(026|405|508|844|91[37])\d{9})(?:\d{3})?$)", \
        R"(^4(17500|026|405|508|844|91[37])\d*$)") \
    row(discover, "Discover", R"(^6(?:011|4[4-9]\d|5\d{2}|22\d)\d{12}(?:\d{3})?$)", R"(^6(?:011|4[4-9]|5|22)\d*$)") \
    row(dinersClub, "Diners Club", R"(^3(?:0[0-5]|[68]\d)\d{11}$)", R"(^3(?:0[0-5]|[68])\d*$)")
// clang-format on

#define TOVI_PAYMENT_CARD_TYPE_CASE(type, ...) type,
enum class PaymentCardType { TOVI_PAYMENT_CARD_TYPES(TOVI_PAYMENT_CARD_TYPE_CASE) };
#undef TOVI_PAYMENT_CARD_TYPE_CASE

// "American Express", "MasterCard", ...
[[nodiscard]] std::string_view rawValue(PaymentCardType type);
// The type whose raw value is exactly `raw`.
[[nodiscard]] std::optional<PaymentCardType> paymentCardTypeFromRawValue(std::string_view raw);

// The types tried, in order; the first match wins. Initially amex, mastercard, maestro,
// visaElectron, visa, discover, dinersClub: Electron ranges are also Visa numbers, so Electron
// must be tried first. A host may reorder or shorten it at run time.
[[nodiscard]] std::vector<PaymentCardType>& allPaymentCardTypes();

// The first type of `allPaymentCardTypes()` whose whole-number pattern matches all of
// `cardNumber`, or absent.
[[nodiscard]] std::optional<PaymentCardType> paymentCardType(std::string_view cardNumber);

// The same with the prefix patterns, for a number being typed; absent for no input or fewer
// than four characters.
[[nodiscard]] std::optional<PaymentCardType> suggestedTypeForCardNumber(const std::optional<std::string>& cardNumber);

}  // namespace tovi
