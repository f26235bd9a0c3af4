// Pasted text through the card number's brand detection, number and code masks and checksum,
// the steps a paste into a card field takes before anything is shown. A card mask lets only
// its own spaces and characters built on an ASCII digit through (a digit keeps its combining
// marks: a position accepts a character in which its expression finds a match), never writes
// more positions than it has, and masking its own output changes nothing.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "KorvaneElements/CardBrand.hpp"
#include "KorvaneElements/CardNumberUITextField.hpp"
#include "KorvaneElements/ElementMask.hpp"
#include "platform/Text.hpp"

namespace {

using namespace korvane::elements;

// Names the broken rule and shows the masked text byte by byte (it may not be UTF-8).
[[noreturn]] void fail(const char* what, std::string_view masked) {
    std::fprintf(stderr, "%s:", what);
    for (unsigned char c : masked) std::fprintf(stderr, " %02x", c);
    std::fprintf(stderr, "\n");
    std::abort();
}

void checkMasked(const ElementMask& mask, std::string_view text) {
    const std::string masked = applyMask(mask, text);
    const std::vector<std::string> shown = platform::characters(masked);
    if (shown.size() > maskLength(mask)) fail("more characters than positions", masked);
    for (const auto& character : shown) {
        if (character != " " && (character[0] < '0' || character[0] > '9')) fail("not a digit", masked);
    }
    if (applyMask(mask, masked) != masked) fail("masking the masked text changes it", masked);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);

    const CardBrandResults results = CardBrand::getCardBrand(text);
    if (results.bestMatchCardBrand) {
        checkMasked(results.bestMatchCardBrand->cardNumberMaskInput, text);
        checkMasked(results.bestMatchCardBrand->cvcMaskInput, text);
    }
    for (const auto& brand : CardBrand::DefaultCardBrands()) checkMasked(brand.cardNumberMaskInput, text);
    (void)luhnValid(text);
    return 0;
}
