// Random key sequences into both amount entry fields, the dollars field of the custom amount row
// and the till-style cents field, under en_US or de_DE: typing (digits, both separators, digits
// of another script, emoji, a no-break space, signs, letters), pasting, deleting, moving the
// caret, selecting, leaving and tapping, with the parent's update after every step.
//
// After every step: nothing stopped; each bound value is finite and not negative; the text
// read back the way the field reads typing gives the bound value (and an empty text goes with
// no value, or zero cents); the caret lies inside the text.
// The first byte picks the locale; every further byte is one step.

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "ToviUI/CurrencyTextFieldSwiftUIWrapper.hpp"
#include "ToviUI/CurrencyUITextField.hpp"
#include "TypedAmount.hpp"
#include "platform/Text.hpp"
#include "platform/testing/ManualMainQueue.hpp"
#include "platform/testing/ScopedLocale.hpp"
#include "platform/view/TextFieldDriver.hpp"

namespace {

constexpr std::string_view kLocales[] = {"en_US", "de_DE"};
constexpr std::string_view kKeys[] = {"0", "1", "2", "3", "4",      "5", "6", "7", "8", "9",   ".",
                                      ",", "a", "٣", "😀", "\u00A0", "-", "e", "$", "Ⅻ", "\xFF"};
constexpr std::string_view kPastes[] = {
    "1e9", "-5",   "1234567890123456789012345678901234567890", "12.34", "1,234.56", "9999999999", "0.001", "abc",
    "٣٣",  "1.2.3"};

void check(bool condition, const char* what) {
    if (!condition) {
        std::fprintf(stderr, "invariant broken: %s\n", what);
        std::abort();
    }
}

void checkCaret(const platform::TextField& field) {
    check(field.selectedTextRange().end() <= platform::utf16Length(*field.text()), "caret outside the text");
}

void checkDollars(const platform::TextField& field, const std::optional<double>& value) {
    checkCaret(field);
    const std::string text = *field.text();
    if (text.empty()) {
        check(!value, "an empty dollars field with a value");
        return;
    }
    check(value.has_value(), "a dollars text without a value");
    check(std::isfinite(*value) && *value >= 0, "a dollars value that is not finite or negative");
    const std::string separator = tovi::internal::deviceDecimalSeparator();
    check(tovi::internal::typedNumber(tovi::internal::numericText(text, separator)) == *value,
          "the dollars text does not read back as the value");
}

void checkCents(const platform::TextField& field, std::int64_t cents) {
    checkCaret(field);
    check(cents >= 0, "negative cents");
    std::int64_t shown = 0;
    const std::string text = *field.text();
    for (char c : text) {
        if (c >= '0' && c <= '9') shown = shown * 10 + (c - '0');
    }
    check(shown == cents, "the cents text does not read back as the value");
}

void step(platform::TextFieldDriver& user, platform::TextField& field, std::uint8_t byte) {
    const std::size_t length = platform::utf16Length(*field.text());
    const unsigned arg = byte / 8;
    switch (byte % 8) {
        case 0:
        case 1:
        case 2:
            user.type(kKeys[arg % std::size(kKeys)]);
            break;
        case 3:
            user.paste(kPastes[arg % std::size(kPastes)]);
            break;
        case 4:
            user.deleteBackward();
            break;
        case 5:
            user.placeCaret(arg % (length + 1));
            break;
        case 6:
            user.select(platform::TextRange{arg % (length + 1), arg % 3});
            break;
        default:
            if (arg % 2 == 0) {
                user.leave();
            } else {
                user.tap();
            }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0 || size > 64) return 0;
    platform::ScopedLocale locale(kLocales[data[0] % std::size(kLocales)], "UTC");
    platform::ManualMainQueueScope main;

    std::optional<double> dollars;
    tovi::CurrencyTextFieldSwiftUIWrapper wrapper{
        .value = {[&] { return dollars; }, [&](std::optional<double> v) { dollars = v; }},
        .alwaysShowFractions = true,
        .currencySymbol = "$"};
    auto coordinator = wrapper.makeCoordinator();
    auto dollarsField = wrapper.makeUIView(*coordinator);
    platform::TextFieldDriver dollarsUser(*dollarsField);

    std::int64_t cents = 0;
    auto centsField = std::make_shared<tovi::CurrencyUITextField>(
        platform::view::Binding<std::int64_t>([&] { return cents; }, [&](std::int64_t c) { cents = c; }), 17, "Amount");
    platform::TextFieldDriver centsUser(*centsField);

    for (std::size_t i = 1; i < size; ++i) {
        step(dollarsUser, *dollarsField, data[i]);
        step(centsUser, *centsField, data[i]);
        main->runUntilIdle();
        wrapper.updateUIView(*dollarsField, *coordinator);  // the parent's rebuild
        checkDollars(*dollarsField, dollars);
        checkCents(*centsField, cents);
    }
    return 0;
}
