#include "ToviUI/CurrencyFormat.hpp"

#include <cmath>
#include <cstdio>
#include <limits>

#include "Fatal.hpp"
#include "platform/Fatal.hpp"

namespace tovi {

std::string formatCurrencyAmount(double dollars) {
    platform::NumberFormatter formatter(platform::NumberFormatter::Style::currency);  // current locale
    formatter.setUsesGroupingSeparator(true);
    if (auto text = formatter.format(dollars)) return *std::move(text);
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, std::signbit(dollars) ? "-$%0.2f" : "$%0.2f", std::fabs(dollars));
    return buffer;
}

const platform::NumberFormatter& usdAmountFormatter() {
    static const platform::NumberFormatter* formatter = [] {
        auto* made = new platform::NumberFormatter(platform::NumberFormatter::Style::currency, "en_US");
        made->setMinimumFractionDigits(2);
        made->setMaximumFractionDigits(2);
        return made;
    }();
    return *formatter;
}

std::string formatUsdAmount(double dollars) {
    auto text = usdAmountFormatter().format(dollars);
    if (!text) platform::fatalStop(internal::kUnexpectedNil);
    return *std::move(text);
}

std::int64_t dollarsToCents(double dollars) {
    const double product = dollars * 100.0;
    if (!std::isfinite(product)) platform::fatalStop(internal::kNonFiniteDollars);
    // The truncation of anything above -2^63 - 2048 (the next double down) still fits.
    if (product <= -9223372036854777856.0) platform::fatalStop(internal::kDollarsBelowRange);
    if (product >= 9223372036854775808.0) platform::fatalStop(internal::kDollarsAboveRange);
    return static_cast<std::int64_t>(product);
}

std::int32_t centsToInt32(std::int64_t cents) {
    if (cents < std::numeric_limits<std::int32_t>::min() || cents > std::numeric_limits<std::int32_t>::max()) {
        platform::fatalStop(internal::kNotEnoughBits);
    }
    return static_cast<std::int32_t>(cents);
}

}  // namespace tovi
