#include "ToviUI/CreditCardBrand.hpp"

#include <array>
#include <cstddef>

namespace tovi {

namespace {

#define TOVI_CREDIT_CARD_BRAND_NAME(brand) #brand,
constexpr std::array kRawValues{TOVI_CREDIT_CARD_BRANDS(TOVI_CREDIT_CARD_BRAND_NAME)};
#undef TOVI_CREDIT_CARD_BRAND_NAME

}  // namespace

std::string_view rawValue(CreditCardBrand brand) {
    return kRawValues[static_cast<std::size_t>(brand)];
}

std::optional<CreditCardBrand> creditCardBrand(std::string_view raw) {
    for (std::size_t i = 0; i < kRawValues.size(); ++i) {
        if (kRawValues[i] == raw) return static_cast<CreditCardBrand>(i);
    }
    return std::nullopt;
}

}  // namespace tovi
