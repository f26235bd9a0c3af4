#include "ToviUI/CardBrand.hpp"

#include <iterator>

#include "ToviUI/Hasher.hpp"
#include "ToviUI/PaymentMethodUiModel.hpp"

namespace tovi {

namespace {

struct BrandRow {
    CardBrand brand;
    std::string_view backendName;
    std::string_view displayName;
    ToviImageSource image;
};

#define TOVI_CARD_BRAND_ROW(brand, backendName, displayName, image) \
    {CardBrand::brand, backendName, displayName, ToviImageSource::image},
constexpr BrandRow kBrands[] = {TOVI_CARD_BRANDS(TOVI_CARD_BRAND_ROW)};
#undef TOVI_CARD_BRAND_ROW
static_assert(kBrands[std::size(kBrands) - 1].brand == CardBrand::unknown, "unknown is the last row, the fallback");

const BrandRow& rowOf(CardBrand brand) {
    for (const auto& row : kBrands) {
        if (row.brand == brand) return row;
    }
    return kBrands[std::size(kBrands) - 1];
}

}  // namespace

CardBrand cardBrandFromBackend(std::string_view brand) {
    for (const auto& row : kBrands) {
        if (row.brand != CardBrand::unknown && row.backendName == brand) return row.brand;
    }
    return CardBrand::unknown;
}

std::string_view displayName(CardBrand brand) {
    return rowOf(brand).displayName;
}

ToviImageSource imageSource(CardBrand brand) {
    return rowOf(brand).image;
}

PaymentMethodUiModel makePaymentMethodUiModel(const ToviSharedPaymentMethod& record) {
    return PaymentMethodUiModel{
        .id = record.id,
        .card = CardUiModel{.brand = cardBrandFromBackend(record.card.brand),
                            .firstSix = record.card.firstSix,
                            .lastFour = record.card.lastFour},
        .isExpired = false,
    };
}

}  // namespace tovi

std::size_t std::hash<tovi::CardUiModel>::operator()(const tovi::CardUiModel& card) const noexcept {
    return tovi::Hasher().combine(card.brand).combine(card.firstSix).combine(card.lastFour).finish();
}

std::size_t std::hash<tovi::PaymentMethodUiModel>::operator()(const tovi::PaymentMethodUiModel& method) const noexcept {
    return tovi::Hasher()
        .combine(method.id)
        .combine(std::hash<tovi::CardUiModel>{}(method.card))
        .combine(method.isExpired)
        .finish();
}
