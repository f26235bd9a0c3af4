#include "ToviUI/CurrencyAmountText.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "TypedAmount.hpp"
#include "platform/Locale.hpp"

namespace tovi {

namespace {

int placesOrDefault(std::optional<int> places) {
    return std::max(places.value_or(2), 0);
}

}  // namespace

platform::NumberFormatter& currencyInputFormatter() {
    // Never destroyed: it lives as long as the process, like the fields that use it.
    static auto* formatter = new platform::NumberFormatter(platform::NumberFormatter::Style::currency);
    static std::string formatterLocale = platform::currentLocale();
    // A host that mirrors a change of the device's locale sees it at the next use; the symbol
    // and fraction digits set so far survive the change, as they survive between calls.
    if (std::string now = platform::currentLocale(); now != formatterLocale) {
        formatter->setLocale(now);
        formatterLocale = std::move(now);
    }
    return *formatter;
}

std::optional<std::string> amountTextFromValue(std::optional<int> numberOfDecimalPlaces, bool alwaysShowFractions,
                                               const std::optional<std::string>& currencySymbol, double value) {
    platform::NumberFormatter& formatter = currencyInputFormatter();
    const int places = placesOrDefault(numberOfDecimalPlaces);
    if (alwaysShowFractions) {
        formatter.setMinimumFractionDigits(places);
        formatter.setMaximumFractionDigits(places);
    } else {
        double whole = 0;
        formatter.setMaximumFractionDigits(std::modf(value, &whole) > 0 ? places : 0);
    }
    if (currencySymbol) formatter.setCurrencySymbol(*currencySymbol);
    return formatter.format(value);
}

std::optional<std::string> amountTextFromTyping(std::optional<int> numberOfDecimalPlaces,
                                                const std::optional<std::string>& currencySymbol,
                                                std::string_view text) {
    const std::string separator = internal::deviceDecimalSeparator();
    const std::string numeric = internal::numericText(text, separator);
    if (numeric.empty()) return std::nullopt;
    const double number = internal::typedNumber(numeric);
    const std::vector<std::string_view> parts = internal::splitAt(numeric, separator);
    platform::NumberFormatter& formatter = currencyInputFormatter();

    if (parts.size() != 2) {
        if (currencySymbol) formatter.setCurrencySymbol(*currencySymbol);
        formatter.setMaximumFractionDigits(0);
        return formatter.format(number);
    }
    // A fraction, perhaps still empty: as many digits as typed. The symbol is left as the last
    // call set it.
    const std::string_view fraction = parts[1];
    const int digits = std::min(placesOrDefault(numberOfDecimalPlaces), static_cast<int>(fraction.size()));
    formatter.setMinimumFractionDigits(digits);
    formatter.setMaximumFractionDigits(digits);
    std::optional<std::string> shown = formatter.format(number);
    // Keeps a just typed separator on screen: "$12." rather than "$12".
    if (shown && fraction.empty()) *shown += separator;
    return shown;
}

namespace internal {

std::string deviceDecimalSeparator() {
    // The shared formatter already follows the device's locale and holds its symbols; building
    // the locale's symbols afresh on every key would cost more than the rest of the key.
    std::string separator = currencyInputFormatter().decimalSeparator();
    return separator.empty() ? "." : separator;
}

std::string numericText(std::string_view text, std::string_view separator) {
    std::string kept;
    for (std::size_t i = 0; i < text.size();) {
        if (!separator.empty() && text.substr(i).starts_with(separator)) {
            kept += separator;
            i += separator.size();
        } else {
            if (text[i] >= '0' && text[i] <= '9') kept += text[i];
            ++i;
        }
    }
    return kept;
}

std::vector<std::string_view> splitAt(std::string_view text, std::string_view separator) {
    std::vector<std::string_view> parts;
    if (separator.empty()) return {text};
    for (std::size_t at = text.find(separator);; at = text.find(separator)) {
        parts.push_back(text.substr(0, at));
        if (at == std::string_view::npos) return parts;
        text.remove_prefix(at + separator.size());
    }
}

double typedNumber(std::string_view numeric) {
    std::string decimal(numeric);
    std::ranges::replace(decimal, ',', '.');
    double number = 0;
    const char* end = decimal.data() + decimal.size();
    auto [stop, error] = std::from_chars(decimal.data(), end, number, std::chars_format::fixed);
    if (error != std::errc{} || stop != end || !std::isfinite(number)) return 0;
    return number;
}

}  // namespace internal

}  // namespace tovi
