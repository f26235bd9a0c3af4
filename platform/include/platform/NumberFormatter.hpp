#pragma once
// NumberFormatter: locale-aware decimal and currency text, with the phone's defaults.
//
//   platform::NumberFormatter usd(platform::NumberFormatter::Style::currency, "en_US");
//   usd.format(1234.5);   // "$1,234.50"
//   usd.format(-12.3);    // "-$12.30"
//
// Defaults come from the locale and style: a currency formatter shows the locale's currency
// with its usual fraction digits (two for dollars and euros, none for yen); a decimal one
// shows up to three. Rounding is half-even on the binary value (0.125 with two digits gives
// "0.12"). Separators are the locale's own characters, which may be non-ASCII: de_DE writes
// "1.234,50\u00A0€" with a no-break space before the euro sign.
//
// Settings made through the setters survive `setLocale`. Fraction digits behave like the
// phone's: a maximum below the minimum lowers the minimum, a minimum above the maximum
// raises the maximum. An explicit currency symbol wins over the currency code's symbol,
// whichever was set last.
//
// Thread safety: const members may be called from several threads at once (a shared
// process-wide formatter is fine); setters must not run concurrently with any other call.
// A moved-from formatter may only be assigned to or destroyed.

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

class NumberFormatter {
public:
    enum class Style { decimal, currency };

    // Uses the current locale (platform::currentLocale()) as it is now.
    explicit NumberFormatter(Style style = Style::decimal);
    // An identifier that can't be read gives the root locale's formats, never a failure.
    NumberFormatter(Style style, std::string_view localeId);
    ~NumberFormatter();
    NumberFormatter(const NumberFormatter& other);
    NumberFormatter& operator=(const NumberFormatter& other);
    NumberFormatter(NumberFormatter&& other) noexcept;
    NumberFormatter& operator=(NumberFormatter&& other) noexcept;

    [[nodiscard]] Style style() const;
    [[nodiscard]] std::string locale() const;
    void setLocale(std::string_view localeId);

    // ISO 4217 code, such as "USD". Setting one also brings its usual fraction digits unless
    // they were set explicitly.
    [[nodiscard]] std::string currencyCode() const;
    void setCurrencyCode(std::string_view code);

    // The text shown for the currency, such as "$" or "€". A symbol that ends in a letter is
    // kept apart from the digits by a no-break space ("USD\u00A02.00").
    [[nodiscard]] std::string currencySymbol() const;
    void setCurrencySymbol(std::string_view symbol);

    [[nodiscard]] bool usesGroupingSeparator() const;
    void setUsesGroupingSeparator(bool uses);

    // Negative values count as 0.
    [[nodiscard]] int minimumFractionDigits() const;
    void setMinimumFractionDigits(int digits);
    [[nodiscard]] int maximumFractionDigits() const;
    void setMaximumFractionDigits(int digits);

    // The text for `value`, or absent when the platform gives none. Negative zero keeps its
    // sign ("-$0.00"), as on the phone.
    [[nodiscard]] std::optional<std::string> format(double value) const;

    // The locale's decimal separator, such as "." or ",".
    [[nodiscard]] std::string decimalSeparator() const;

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

// The decimal separator of a locale ("." for en_US, "," for de_DE); the root locale's for an
// identifier that can't be read.
[[nodiscard]] std::string decimalSeparator(std::string_view localeId);

}  // namespace platform
