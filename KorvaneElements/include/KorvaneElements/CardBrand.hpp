#pragma once
// The card brand catalogue and brand detection.
//
// `CardBrand::getCardBrand` finds, from the leading digits of a number, the brands it may
// belong to, the best match (the longest matching prefix; on a tie the brand listed first) and
// whether the number has a complete length for that brand. The number element picks its mask
// from the best match and the verification code element its code length.
//
// The catalogue is process-wide and starts as the twelve built-in brands; `addCardBrands`
// replaces it whole (a host that wants to keep the built-in brands includes
// `DefaultCardBrands()` in what it passes).
//
// Digit positions of the built-in masks accept the ASCII digits 0-9 only: a digit of another
// script is dropped like a letter, because later steps read the text as an integer.
//
// Thread safety: none; the catalogue is read and written on the main queue. The constants are
// built once, on first use, thread-safely.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "KorvaneElements/ElementMask.hpp"

namespace korvane::elements {

namespace CardBrandName {
inline constexpr const char* visa = "visa";
inline constexpr const char* mastercard = "mastercard";
inline constexpr const char* americanExpress = "americanExpress";
inline constexpr const char* dinersClub = "dinersClub";
inline constexpr const char* discover = "discover";
inline constexpr const char* jcb = "jcb";
inline constexpr const char* unionPay = "unionPay";
inline constexpr const char* maestro = "maestro";
inline constexpr const char* elo = "elo";
inline constexpr const char* mir = "mir";
inline constexpr const char* hiper = "hiper";
inline constexpr const char* hipercard = "hipercard";
}  // namespace CardBrandName

// A single prefix, or an inclusive range of prefixes as a two-integer array. Any other shape
// (a string, an array of another length) is skipped by detection.
using CardIdentifier = std::variant<std::int64_t, std::vector<std::int64_t>, std::string>;

class CardBrandDetails {
public:
    // `gaps` are the positions before which the number mask shows a space; honoured only in
    // ascending order. The mask has as many digit positions as the last of `validLengths`.
    // REQUIRES: `validLengths` is not empty and its last element is at least 1; otherwise the
    // process stops.
    CardBrandDetails(std::string cardBrandName, std::vector<CardIdentifier> cardIdentifiers, ElementMask cvcMaskInput,
                     const std::vector<int>& gaps, std::vector<int> validLengths);

    std::string cardBrandName;
    std::vector<CardIdentifier> cardIdentifiers;
    ElementMask cvcMaskInput;
    ElementMask cardNumberMaskInput;
    std::vector<int> validLengths;
};

struct CardBrandResults {
    std::vector<CardBrandDetails> matchingCardBrands;
    std::optional<CardBrandDetails> bestMatchCardBrand;
    bool maskSatisfied = false;
};

// What the number element lets a host know about a card.
struct CardMetadata {
    std::optional<std::string> cardLast4;
    std::optional<std::string> cardBin;
    std::string cardBrand = "unknown";

    friend bool operator==(const CardMetadata&, const CardMetadata&) = default;
};

class CardBrand {
public:
    // The digit expression shared by every built-in mask ("[0-9]").
    [[nodiscard]] static const RegexRef& digitMaskRegex();
    [[nodiscard]] static const ElementMask& cvcMask3();
    [[nodiscard]] static const ElementMask& cvcMask4();

    [[nodiscard]] static const CardBrandDetails& VISA();
    [[nodiscard]] static const CardBrandDetails& MASTERCARD();
    [[nodiscard]] static const CardBrandDetails& AMERICAN_EXPRESS();
    [[nodiscard]] static const CardBrandDetails& DINERS_CLUB();
    [[nodiscard]] static const CardBrandDetails& DISCOVER();
    [[nodiscard]] static const CardBrandDetails& JCB();
    [[nodiscard]] static const CardBrandDetails& UNION_PAY();
    [[nodiscard]] static const CardBrandDetails& MAESTRO();
    [[nodiscard]] static const CardBrandDetails& ELO();
    [[nodiscard]] static const CardBrandDetails& MIR();
    [[nodiscard]] static const CardBrandDetails& HIPER();
    [[nodiscard]] static const CardBrandDetails& HIPERCARD();

    // The twelve built-in brands, in catalogue order.
    [[nodiscard]] static const std::vector<CardBrandDetails>& DefaultCardBrands();
    // The catalogue in force.
    [[nodiscard]] static const std::vector<CardBrandDetails>& CardBrands();

    // Replaces the catalogue with `cardBrands` and logs one line per brand.
    static void addCardBrands(std::vector<CardBrandDetails> cardBrands);

    // Absent or empty text gives empty results. Expected to be digits; a prefix that does not
    // read as a decimal integer simply does not match.
    [[nodiscard]] static CardBrandResults getCardBrand(std::optional<std::string_view> text);
};

}  // namespace korvane::elements
