#include "KorvaneElements/CardBrand.hpp"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

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

// The last text detected and its results: one keystroke in a number field asks about the same
// text up to three times (whether the key fits, the change handling, the event). Like the
// catalogue, used from the main thread only; forgotten when the catalogue changes.
std::optional<std::pair<std::string, CardBrandResults>>& lastDetection() {
    static std::optional<std::pair<std::string, CardBrandResults>> last;
    return last;
}

// Digits of `value` as the phone counts the characters of its decimal text (a sign counts).
// Counted without building the text: detection runs this for every identifier on every key.
std::size_t decimalWidth(std::int64_t value) {
    std::size_t width = value < 0 ? 2 : 1;
    for (; value <= -10 || value >= 10; value /= 10) {
        ++width;
    }
    return width;
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

#define KV_UNWRAP(...) __VA_ARGS__
#define KV_CARD_BRAND_DETAILS(ACCESSOR, name, codeLength, gaps, lengths, ...)                        \
    CardBrandDetails(CardBrandName::name, Ids{__VA_ARGS__}, cvcMask##codeLength(), {KV_UNWRAP gaps}, \
                     {KV_UNWRAP lengths}),

const std::vector<CardBrandDetails>& CardBrand::DefaultCardBrands() {
    static const std::vector<CardBrandDetails> brands{KORVANE_CARD_BRANDS(KV_CARD_BRAND_DETAILS)};
    return brands;
}

namespace {
// Each accessor's place in the defaults, in row order.
enum BuiltInBrand : std::size_t {
#define KV_CARD_BRAND_INDEX(ACCESSOR, ...) k##ACCESSOR,
    KORVANE_CARD_BRANDS(KV_CARD_BRAND_INDEX)
};
}  // namespace

#define KV_CARD_BRAND_ACCESSOR(ACCESSOR, ...)       \
    const CardBrandDetails& CardBrand::ACCESSOR() { \
        return DefaultCardBrands()[k##ACCESSOR];    \
    }
KORVANE_CARD_BRANDS(KV_CARD_BRAND_ACCESSOR)

#undef KV_CARD_BRAND_ACCESSOR
#undef KV_CARD_BRAND_INDEX
#undef KV_CARD_BRAND_DETAILS
#undef KV_UNWRAP

const std::vector<CardBrandDetails>& CardBrand::CardBrands() {
    return currentCatalogue();
}

void CardBrand::addCardBrands(std::vector<CardBrandDetails> cardBrands) {
    currentCatalogue() = std::move(cardBrands);
    lastDetection().reset();
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
    auto& last = lastDetection();
    if (last && last->first == *text) {
        return last->second;
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
    last.emplace(std::string(*text), results);
    return results;
}

}  // namespace korvane::elements
