#pragma once

#include <string>
#include <variant>

namespace tovi {

// A card captured by the vault, named by the token id that the vault returned. Never a number.
struct AddPaymentMethodCreditCard {
    std::string tokenId;

    friend bool operator==(const AddPaymentMethodCreditCard&, const AddPaymentMethodCreditCard&) = default;
};

// The kinds of payment source a customer can add; only cards are offered.
using AddPaymentMethodType = std::variant<AddPaymentMethodCreditCard>;

[[nodiscard]] inline AddPaymentMethodType creditCard(std::string tokenId) {
    return AddPaymentMethodCreditCard{std::move(tokenId)};
}

}  // namespace tovi
