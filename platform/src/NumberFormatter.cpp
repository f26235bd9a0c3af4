#include "platform/NumberFormatter.hpp"

#include <unicode/dcfmtsym.h>
#include <unicode/decimfmt.h>
#include <unicode/numfmt.h>

#include <algorithm>
#include <mutex>

#include "IcuSupport.hpp"
#include "platform/Locale.hpp"
#include "platform/Text.hpp"

namespace platform {

namespace {

// ICU accepts up to 999; nothing sensible needs more than this.
constexpr int kMaxFractionDigits = 100;

int clampDigits(int digits) {
    return std::clamp(digits, 0, kMaxFractionDigits);
}

}  // namespace

struct NumberFormatter::Impl {
    // Guards `format`: ICU's formatter keeps scratch state, so even const formatting is
    // serialised.
    mutable std::mutex mutex;

    Style style = Style::decimal;
    std::string locale;
    // What the caller set explicitly; re-applied whenever the ICU formatter is rebuilt.
    std::optional<std::u16string> currencyCode;
    std::optional<std::string> currencySymbol;
    std::optional<bool> grouping;
    std::optional<int> minFraction;
    std::optional<int> maxFraction;

    // Null only if ICU can't make a formatter at all (missing data).
    std::unique_ptr<icu::NumberFormat> format;

    void rebuild() {
        UErrorCode status = U_ZERO_ERROR;
        const icu::Locale icuLocale = internal::makeLocale(locale);
        std::unique_ptr<icu::NumberFormat> made(style == Style::currency
                                                    ? icu::NumberFormat::createCurrencyInstance(icuLocale, status)
                                                    : icu::NumberFormat::createInstance(icuLocale, status));
        // A fallback to root data arrives as a warning; only a real failure counts.
        if (U_FAILURE(status)) made.reset();
        format = std::move(made);
        if (!format) return;
        if (currencyCode) applyCurrencyCode();
        if (grouping) format->setGroupingUsed(*grouping);
        if (maxFraction) format->setMaximumFractionDigits(*maxFraction);
        if (minFraction) format->setMinimumFractionDigits(*minFraction);
    }

    void applyCurrencyCode() {
        UErrorCode status = U_ZERO_ERROR;
        // ICU wants a NUL-terminated code of exactly three letters.
        std::u16string code = currencyCode->substr(0, 3);
        if (code.size() == 3) format->setCurrency(code.c_str(), status);
        // The code brings its own symbol; an explicit one still wins.
        applyCurrencySymbol();
        // The code also brings its digits; explicit ones still win.
        if (maxFraction) format->setMaximumFractionDigits(*maxFraction);
        if (minFraction) format->setMinimumFractionDigits(*minFraction);
    }

    void applyCurrencySymbol() {
        auto* decimal = dynamic_cast<icu::DecimalFormat*>(format.get());
        if (decimal == nullptr || !currencySymbol) return;
        icu::DecimalFormatSymbols symbols(*decimal->getDecimalFormatSymbols());
        symbols.setSymbol(icu::DecimalFormatSymbols::kCurrencySymbol, internal::toIcu(*currencySymbol));
        decimal->setDecimalFormatSymbols(symbols);
    }

    [[nodiscard]] std::string symbol(icu::DecimalFormatSymbols::ENumberFormatSymbol which) const {
        if (const auto* decimal = dynamic_cast<const icu::DecimalFormat*>(format.get())) {
            return internal::toUtf8(decimal->getDecimalFormatSymbols()->getConstSymbol(which));
        }
        UErrorCode status = U_ZERO_ERROR;
        icu::DecimalFormatSymbols symbols(internal::makeLocale(locale), status);
        return U_SUCCESS(status) ? internal::toUtf8(symbols.getConstSymbol(which)) : std::string();
    }

    [[nodiscard]] std::unique_ptr<Impl> clone() const {
        std::lock_guard lock(mutex);
        auto copy = std::make_unique<Impl>();
        copy->style = style;
        copy->locale = locale;
        copy->currencyCode = currencyCode;
        copy->currencySymbol = currencySymbol;
        copy->grouping = grouping;
        copy->minFraction = minFraction;
        copy->maxFraction = maxFraction;
        if (format) copy->format.reset(format->clone());
        return copy;
    }
};

NumberFormatter::NumberFormatter(Style style) : NumberFormatter(style, currentLocale()) {}

NumberFormatter::NumberFormatter(Style style, std::string_view localeId) : impl_(std::make_unique<Impl>()) {
    impl_->style = style;
    impl_->locale = std::string(localeId);
    impl_->rebuild();
}

NumberFormatter::~NumberFormatter() = default;
NumberFormatter::NumberFormatter(const NumberFormatter& other) : impl_(other.impl_->clone()) {}
NumberFormatter& NumberFormatter::operator=(const NumberFormatter& other) {
    if (this != &other) impl_ = other.impl_->clone();
    return *this;
}
NumberFormatter::NumberFormatter(NumberFormatter&& other) noexcept = default;
NumberFormatter& NumberFormatter::operator=(NumberFormatter&& other) noexcept = default;

NumberFormatter::Style NumberFormatter::style() const {
    return impl_->style;
}

std::string NumberFormatter::locale() const {
    return impl_->locale;
}

void NumberFormatter::setLocale(std::string_view localeId) {
    std::lock_guard lock(impl_->mutex);
    impl_->locale = std::string(localeId);
    impl_->rebuild();
}

std::string NumberFormatter::currencyCode() const {
    std::lock_guard lock(impl_->mutex);
    if (!impl_->format) return impl_->currencyCode ? utf16ToUtf8(*impl_->currencyCode) : std::string();
    const char16_t* code = impl_->format->getCurrency();
    return code == nullptr ? std::string() : utf16ToUtf8(code);
}

void NumberFormatter::setCurrencyCode(std::string_view code) {
    std::lock_guard lock(impl_->mutex);
    impl_->currencyCode = utf8ToUtf16(code);
    if (impl_->format) impl_->applyCurrencyCode();
}

std::string NumberFormatter::currencySymbol() const {
    std::lock_guard lock(impl_->mutex);
    if (impl_->currencySymbol) return *impl_->currencySymbol;
    return impl_->symbol(icu::DecimalFormatSymbols::kCurrencySymbol);
}

void NumberFormatter::setCurrencySymbol(std::string_view symbol) {
    std::lock_guard lock(impl_->mutex);
    impl_->currencySymbol = std::string(symbol);
    if (impl_->format) impl_->applyCurrencySymbol();
}

bool NumberFormatter::usesGroupingSeparator() const {
    std::lock_guard lock(impl_->mutex);
    if (!impl_->format) return impl_->grouping.value_or(true);
    return impl_->format->isGroupingUsed();
}

void NumberFormatter::setUsesGroupingSeparator(bool uses) {
    std::lock_guard lock(impl_->mutex);
    impl_->grouping = uses;
    if (impl_->format) impl_->format->setGroupingUsed(uses);
}

int NumberFormatter::minimumFractionDigits() const {
    std::lock_guard lock(impl_->mutex);
    if (!impl_->format) return impl_->minFraction.value_or(0);
    return impl_->format->getMinimumFractionDigits();
}

void NumberFormatter::setMinimumFractionDigits(int digits) {
    digits = clampDigits(digits);
    std::lock_guard lock(impl_->mutex);
    impl_->minFraction = digits;
    if (impl_->maxFraction && *impl_->maxFraction < digits) impl_->maxFraction = digits;
    if (impl_->format) impl_->format->setMinimumFractionDigits(digits);
}

int NumberFormatter::maximumFractionDigits() const {
    std::lock_guard lock(impl_->mutex);
    if (!impl_->format) return impl_->maxFraction.value_or(0);
    return impl_->format->getMaximumFractionDigits();
}

void NumberFormatter::setMaximumFractionDigits(int digits) {
    digits = clampDigits(digits);
    std::lock_guard lock(impl_->mutex);
    impl_->maxFraction = digits;
    if (impl_->minFraction && *impl_->minFraction > digits) impl_->minFraction = digits;
    if (impl_->format) impl_->format->setMaximumFractionDigits(digits);
}

std::optional<std::string> NumberFormatter::format(double value) const {
    std::lock_guard lock(impl_->mutex);
    if (!impl_->format) return std::nullopt;
    icu::UnicodeString text;
    icu::FieldPosition position;
    UErrorCode status = U_ZERO_ERROR;
    impl_->format->format(value, text, position, status);
    if (U_FAILURE(status)) return std::nullopt;
    return internal::toUtf8(text);
}

std::string NumberFormatter::decimalSeparator() const {
    std::lock_guard lock(impl_->mutex);
    return impl_->symbol(icu::DecimalFormatSymbols::kDecimalSeparatorSymbol);
}

std::string decimalSeparator(std::string_view localeId) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::DecimalFormatSymbols symbols(internal::makeLocale(std::string(localeId)), status);
    if (U_FAILURE(status)) return ".";
    return internal::toUtf8(symbols.getConstSymbol(icu::DecimalFormatSymbols::kDecimalSeparatorSymbol));
}

}  // namespace platform
