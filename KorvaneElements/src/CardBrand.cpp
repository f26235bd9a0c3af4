#include "KorvaneElements/CardBrand.hpp"

#include <algorithm>

#include "ElementText.hpp"
#include "KorvaneElements/KvDatadogLogger.hpp"
#include "platform/Fatal.hpp"

namespace korvane::elements {

namespace {

using Ids = std::vector<CardIdentifier>;
using Range = std::vector<std::int64_t>;

CardIdentifier range(std::int64_t low, std::int64_t high) {
    return Range{low, high};
}

ElementMask digitMask(std::size_t count) {
    return ElementMask(count, CardBrand::digitMaskRegex());
}

std::vector<CardBrandDetails>& currentCatalogue() {
    static std::vector<CardBrandDetails> catalogue = CardBrand::DefaultCardBrands();
    return catalogue;
}

// Digits of `value` as the phone counts the characters of its decimal text (a sign counts).
std::size_t decimalWidth(std::int64_t value) {
    return std::to_string(value).size();
}

// One identifier against `text`: the prefix length it matched with, or nothing.
std::optional<std::size_t> matchIdentifier(const CardIdentifier& identifier,
                                           const std::vector<std::string_view>& characters) {
    if (const auto* single = std::get_if<std::int64_t>(&identifier)) {
        std::size_t n = decimalWidth(*single);
        auto prefix = internal::joinPrefix(characters, n);
        auto parsed = internal::parseInt64(prefix);
        if (prefix.empty() || !parsed || *parsed != *single) {
            return std::nullopt;
        }
        return n;
    }
    if (const auto* bounds = std::get_if<Range>(&identifier); bounds && bounds->size() == 2) {
        std::int64_t low = (*bounds)[0];
        std::int64_t high = (*bounds)[1];
        std::size_t n = decimalWidth(low);
        // A prefix that is no decimal integer (a digit of another script, say) is no match,
        // never a stop: text reaching here may come from a paste.
        auto parsed = internal::parseInt64(internal::joinPrefix(characters, n));
        if (!parsed || *parsed < low || *parsed > high) {
            return std::nullopt;
        }
        return n;
    }
    return std::nullopt;
}

}  // namespace

CardBrandDetails::CardBrandDetails(std::string name, std::vector<CardIdentifier> identifiers, ElementMask cvcMask,
                                   const std::vector<int>& gaps, std::vector<int> lengths)
    : cardBrandName(std::move(name)),
      cardIdentifiers(std::move(identifiers)),
      cvcMaskInput(std::move(cvcMask)),
      validLengths(std::move(lengths)) {
    if (validLengths.empty() || validLengths.back() < 1) {
        platform::fatalStop("CardBrandDetails: validLengths must end with a length of at least 1");
    }
    const int length = validLengths.back();
    std::size_t gapIndex = 0;
    cardNumberMaskInput.reserve(static_cast<std::size_t>(length) + gaps.size());
    for (int p = 0; p < length; ++p) {
        if (gapIndex < gaps.size() && gaps[gapIndex] == p) {
            cardNumberMaskInput.emplace_back(std::string(" "));
            ++gapIndex;
        }
        cardNumberMaskInput.emplace_back(CardBrand::digitMaskRegex());
    }
}

const RegexRef& CardBrand::digitMaskRegex() {
    // ASCII digits only: a `\d` would also take other scripts' digits, which the integer
    // readings of detection and the expiry test cannot use.
    static const RegexRef regex = compileElementRegex("[0-9]");
    return regex;
}

const ElementMask& CardBrand::cvcMask3() {
    static const ElementMask mask = digitMask(3);
    return mask;
}

const ElementMask& CardBrand::cvcMask4() {
    static const ElementMask mask = digitMask(4);
    return mask;
}

#define KV_CARD_BRAND(NAME, ...)                                               \
    const CardBrandDetails& CardBrand::NAME() {                                \
        static const CardBrandDetails details = CardBrandDetails(__VA_ARGS__); \
        return details;                                                        \
    }

KV_CARD_BRAND(VISA, CardBrandName::visa, Ids{4}, cvcMask3(), {4, 8, 12}, {16, 18, 19})
KV_CARD_BRAND(MASTERCARD, CardBrandName::mastercard,
              Ids{range(51, 55), range(2221, 2229), range(223, 229), range(23, 26), range(270, 271), 2720}, cvcMask3(),
              {4, 8, 12}, {16})
KV_CARD_BRAND(AMERICAN_EXPRESS, CardBrandName::americanExpress, Ids{34, 37}, cvcMask4(), {4, 10}, {15})
KV_CARD_BRAND(DINERS_CLUB, CardBrandName::dinersClub, Ids{range(300, 305), 36, 38, 39}, cvcMask3(), {4, 10},
              {14, 16, 19})
KV_CARD_BRAND(DISCOVER, CardBrandName::discover, Ids{6011, range(644, 649), 65}, cvcMask3(), {4, 8, 12}, {16, 19})
KV_CARD_BRAND(JCB, CardBrandName::jcb, Ids{2131, 1800, range(3528, 3589)}, cvcMask3(), {4, 8, 12}, {16, 17, 18, 19})
KV_CARD_BRAND(UNION_PAY, CardBrandName::unionPay,
              Ids{620, range(62100, 62197), range(62200, 62205), range(622010, 622999), range(62207, 62209),
                  range(623, 626), 6270, 6272, 6276, range(627700, 627779), range(627781, 627799), range(6282, 6289),
                  6291, 6292, 810, range(8110, 8171)},
              cvcMask3(), {4, 8, 12}, {14, 15, 16, 17, 18, 19})
KV_CARD_BRAND(MAESTRO, CardBrandName::maestro,
              Ids{493698, range(500000, 504174), range(504176, 506698), range(506779, 508999), range(56, 59), 63, 67,
                  6},
              cvcMask3(), {4, 8, 12}, {12, 13, 14, 15, 16, 17, 18, 19})
KV_CARD_BRAND(ELO, CardBrandName::elo,
              Ids{401178,
                  401179,
                  438935,
                  457631,
                  457632,
                  431274,
                  451416,
                  457393,
                  504175,
                  range(506699, 506778),
                  range(509000, 509999),
                  627780,
                  636297,
                  636368,
                  range(650031, 650033),
                  range(650035, 650051),
                  range(650405, 650439),
                  range(650485, 650538),
                  range(650541, 650598),
                  range(650700, 650718),
                  range(650720, 650727),
                  range(650901, 650978),
                  range(651652, 651679),
                  range(655000, 655019),
                  range(655021, 655058)},
              cvcMask3(), {4, 8, 12}, {16})
KV_CARD_BRAND(MIR, CardBrandName::mir, Ids{range(2200, 2204)}, cvcMask3(), {4, 8, 12}, {16, 17, 18, 19})
KV_CARD_BRAND(HIPER, CardBrandName::hiper, Ids{637095, 63737423, 63743358, 637568, 637599, 637609, 637612}, cvcMask3(),
              {4, 8, 12}, {16})
KV_CARD_BRAND(HIPERCARD, CardBrandName::hipercard, Ids{606282}, cvcMask3(), {4, 8, 12}, {16})

#undef KV_CARD_BRAND

const std::vector<CardBrandDetails>& CardBrand::DefaultCardBrands() {
    static const std::vector<CardBrandDetails> brands{
        VISA(), MASTERCARD(), AMERICAN_EXPRESS(), DINERS_CLUB(), DISCOVER(), JCB(), UNION_PAY(), MAESTRO(), ELO(),
        MIR(),  HIPER(),      HIPERCARD()};
    return brands;
}

const std::vector<CardBrandDetails>& CardBrand::CardBrands() {
    return currentCatalogue();
}

void CardBrand::addCardBrands(std::vector<CardBrandDetails> cardBrands) {
    currentCatalogue() = std::move(cardBrands);
    KvDatadogLogger& log = logger();
    for (const auto& brand : currentCatalogue()) {
        log.setAttribute("message", "Added custom card brand " + brand.cardBrandName);
        log.setAttribute("level", "info");
        log.send();
        log.clearAttributes();
    }
}

CardBrandResults CardBrand::getCardBrand(std::optional<std::string_view> text) {
    CardBrandResults results;
    if (!text || text->empty()) {
        return results;
    }
    const std::vector<std::string_view> characters = internal::characters(*text);
    std::size_t bestLength = 0;
    for (const auto& brand : currentCatalogue()) {
        for (const auto& identifier : brand.cardIdentifiers) {
            auto length = matchIdentifier(identifier, characters);
            if (!length) {
                continue;
            }
            results.matchingCardBrands.push_back(brand);
            if (*length > bestLength) {
                bestLength = *length;
                results.bestMatchCardBrand = brand;
                const auto count = static_cast<long long>(characters.size());
                results.maskSatisfied = std::ranges::find(brand.validLengths, count) != brand.validLengths.end();
            }
        }
    }
    return results;
}

}  // namespace korvane::elements
