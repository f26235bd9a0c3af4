#include "ToviUI/PaymentCardType.hpp"

#include <array>
#include <cstddef>

#include "platform/Regex.hpp"

namespace tovi {

namespace {

struct TypeRow {
    PaymentCardType type;
    std::string_view rawValue;
    std::string_view wholeNumber;
    std::string_view prefix;
};

#define TOVI_PAYMENT_CARD_TYPE_ROW(type, raw, whole, prefix) {PaymentCardType::type, raw, whole, prefix},
constexpr TypeRow kTypes[] = {TOVI_PAYMENT_CARD_TYPES(TOVI_PAYMENT_CARD_TYPE_ROW)};
#undef TOVI_PAYMENT_CARD_TYPE_ROW
constexpr std::size_t kTypeCount = std::size(kTypes);

struct Compiled {
    std::optional<platform::Regex> wholeNumber;
    std::optional<platform::Regex> prefix;
};

// Compiled once for the process; the patterns are constants, so a failure to compile is
// impossible in practice and would only make that type never match.
const std::array<Compiled, kTypeCount>& compiled() {
    static const std::array<Compiled, kTypeCount> patterns = [] {
        std::array<Compiled, kTypeCount> out;
        for (std::size_t i = 0; i < kTypeCount; ++i) {
            if (auto r = platform::Regex::compile(kTypes[i].wholeNumber)) out[i].wholeNumber = std::move(*r);
            if (auto r = platform::Regex::compile(kTypes[i].prefix)) out[i].prefix = std::move(*r);
        }
        return out;
    }();
    return patterns;
}

std::optional<PaymentCardType> firstMatch(std::string_view number, std::optional<platform::Regex> Compiled::*which) {
    for (PaymentCardType type : allPaymentCardTypes()) {
        const auto& regex = compiled()[static_cast<std::size_t>(type)].*which;
        if (regex && regex->matchesWhole(number)) return type;
    }
    return std::nullopt;
}

// Characters as a person counts them in a number: code points, not bytes.
std::size_t characterCount(std::string_view text) {
    std::size_t count = 0;
    for (unsigned char c : text) count += (c & 0xC0) != 0x80 ? 1 : 0;
    return count;
}

}  // namespace

std::string_view rawValue(PaymentCardType type) {
    return kTypes[static_cast<std::size_t>(type)].rawValue;
}

std::optional<PaymentCardType> paymentCardTypeFromRawValue(std::string_view raw) {
    for (const auto& row : kTypes) {
        if (row.rawValue == raw) return row.type;
    }
    return std::nullopt;
}

std::vector<PaymentCardType>& allPaymentCardTypes() {
    static std::vector<PaymentCardType> all{
        PaymentCardType::amex, PaymentCardType::mastercard, PaymentCardType::maestro,    PaymentCardType::visaElectron,
        PaymentCardType::visa, PaymentCardType::discover,   PaymentCardType::dinersClub,
    };
    return all;
}

std::optional<PaymentCardType> paymentCardType(std::string_view cardNumber) {
    return firstMatch(cardNumber, &Compiled::wholeNumber);
}

std::optional<PaymentCardType> suggestedTypeForCardNumber(const std::optional<std::string>& cardNumber) {
    if (!cardNumber || characterCount(*cardNumber) < 4) return std::nullopt;
    return firstMatch(*cardNumber, &Compiled::prefix);
}

}  // namespace tovi
