#pragma once
// A saved card as the pickers and sheets show it.

#include <string>

#include "ToviUI/CardBrand.hpp"
#include "ToviUI/ToviSharedRecords.hpp"

namespace tovi {

struct CardUiModel {
    CardBrand brand = CardBrand::unknown;
    std::string firstSix;
    std::string lastFour;

    friend bool operator==(const CardUiModel&, const CardUiModel&) = default;
};

struct PaymentMethodUiModel {
    std::string id;
    CardUiModel card;
    // A plain stored flag: nothing computes expiry. False unless a caller passes true; every
    // consumer honours it (disabled actions, the "Expired" mark).
    bool isExpired = false;

    [[nodiscard]] bool isValid() const { return !isExpired; }
    // Four middle dots and a blank, then the last four digits as the backend sent them.
    [[nodiscard]] std::string obfuscatedCardNumber() const { return "\u00b7\u00b7\u00b7\u00b7 " + card.lastFour; }

    friend bool operator==(const PaymentMethodUiModel&, const PaymentMethodUiModel&) = default;
};

// Maps a backend record; `isExpired` is always false, since the record's expiry is not read.
[[nodiscard]] PaymentMethodUiModel makePaymentMethodUiModel(const ToviSharedPaymentMethod& record);

}  // namespace tovi

template <>
struct std::hash<tovi::CardUiModel> {
    std::size_t operator()(const tovi::CardUiModel& card) const noexcept;
};

template <>
struct std::hash<tovi::PaymentMethodUiModel> {
    std::size_t operator()(const tovi::PaymentMethodUiModel& method) const noexcept;
};
