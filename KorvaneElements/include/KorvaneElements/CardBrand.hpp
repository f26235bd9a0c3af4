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

// The built-in catalogue, one row per brand in catalogue order:
//   row(ACCESSOR, name, code length, (gaps), (valid lengths), identifiers...)
// An identifier is a prefix or `range(low, high)` (inclusive). The `CardBrandName` constants,
// the `CardBrand` accessors and `DefaultCardBrands()` are all expanded from these rows.
// clang-format off
#define KORVANE_CARD_BRANDS(row) \
    row(VISA, visa, 3, (4, 8, 12), (16, 18, 19), 4) \
    row(MASTERCARD, mastercard, 3, (4, 8, 12), (16), \
        range(51, 55), range(2221, 2229), range(223, 229), range(23, 26), range(270, 271), 2720) \
    row(AMERICAN_EXPRESS, americanExpress, 4, (4, 10), (15), 34, 37) \
    row(DINERS_CLUB, dinersClub, 3, (4, 10), (14, 16, 19), range(300, 305), 36, 38, 39) \
    row(DISCOVER, discover, 3, (4, 8, 12), (16, 19), 6011, range(644, 649), 65) \
    row(JCB, jcb, 3, (4, 8, 12), (16, 17, 18, 19), 2131, 1800, range(3528, 3589)) \
    row(UNION_PAY, unionPay, 3, (4, 8, 12), (14, 15, 16, 17, 18, 19), \
        620, range(62100, 62197), range(62200, 62205), range(622010, 622999), range(62207, 62209), \
        range(623, 626), 6270, 6272, 6276, range(627700, 627779), range(627781, 627799), range(6282, 6289), \
        6291, 6292, 810, range(8110, 8171)) \
    row(MAESTRO, maestro, 3, (4, 8, 12), (12, 13, 14, 15, 16, 17, 18, 19), \
        493698, range(500000, 504174), range(504176, 506698), range(506779, 508999), range(56, 59), 63, 67, 6) \
    row(ELO, elo, 3, (4, 8, 12), (16), \
        401178, 401179, 438935, 457631, 457632, 431274, 451416, 457393, 504175, \
        range(506699, 506778), range(509000, 509999), 627780, 636297, 636368, \
        range(650031, 650033), range(650035, 650051), range(650405, 650439), range(650485, 650538), \
        range(650541, 650598), range(650700, 650718), range(650720, 650727), range(650901, 650978), \
        range(651652, 651679), range(655000, 655019), range(655021, 655058)) \
    row(MIR, mir, 3, (4, 8, 12), (16, 17, 18, 19), range(2200, 2204)) \
    row(HIPER, hiper, 3, (4, 8, 12), (16), 637095, 63737423, 63743358, 637568, 637599, 637609, 637612) \
    row(HIPERCARD, hipercard, 3, (4, 8, 12), (16), 606282)
// clang-format on

// The built-in brands' names: `CardBrandName::visa` is "visa".
namespace CardBrandName {
#define KORVANE_CARD_BRAND_NAME(ACCESSOR, name, ...) inline constexpr const char* name = #name;
KORVANE_CARD_BRANDS(KORVANE_CARD_BRAND_NAME)
#undef KORVANE_CARD_BRAND_NAME
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

    // One accessor per built-in brand: `VISA()`, `MASTERCARD()`, ... `HIPERCARD()`.
#define KORVANE_CARD_BRAND_ACCESSOR(ACCESSOR, ...) [[nodiscard]] static const CardBrandDetails& ACCESSOR();
    KORVANE_CARD_BRANDS(KORVANE_CARD_BRAND_ACCESSOR)
#undef KORVANE_CARD_BRAND_ACCESSOR

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
