// Amounts as a server writes them (a JSON number: a balance, a transaction's cents, a reload
// limit) shown through the ICU-backed currency and decimal formats under a device locale of
// several scripts and digit systems. Every amount gets a text; none stops the process.
// The first byte picks the locale, the rest is the number's text.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "Korvane/JSONDecoder.hpp"
#include "ToviUI/CurrencyFormat.hpp"
#include "platform/Locale.hpp"
#include "platform/NumberFormatter.hpp"

namespace {

constexpr std::string_view kLocales[] = {"en_US", "de_DE", "fr_CH", "ja_JP", "ar_EG",
                                         "hi_IN", "th_TH", "fa_IR", "",      "xx_YY"};

void show(double dollars) {
    if (tovi::formatCurrencyAmount(dollars).empty()) std::abort();
    if (tovi::formatUsdAmount(dollars).empty()) std::abort();
    (void)platform::NumberFormatter().format(dollars);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    platform::setCurrentLocale(kLocales[data[0] % std::size(kLocales)]);
    const std::string_view text(reinterpret_cast<const char*>(data + 1), size - 1);

    korvane::JSONDecoder decoder;
    if (auto cents = decoder.decode<std::int64_t>(text)) show(tovi::centsToDollars(*cents));
    if (auto dollars = decoder.decode<double>(text)) show(*dollars);
    return 0;
}
