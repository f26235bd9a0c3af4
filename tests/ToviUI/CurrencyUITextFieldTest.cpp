// The cents field, which fills like a till, and the parent's override of it.

#include <gtest/gtest.h>

#include "ToviUI/CurrencyTextField.hpp"
#include "ToviUI/CurrencyUITextField.hpp"
#include "platform/Console.hpp"
#include "platform/testing/ManualMainQueue.hpp"
#include "platform/testing/ScopedLocale.hpp"
#include "platform/view/ScreenHost.hpp"
#include "platform/view/TextFieldDriver.hpp"

namespace {

using tovi::CurrencyUITextField;

struct CentsField {
    explicit CentsField(const char* locale = "en_US") : scope(locale, "UTC") {}

    platform::ScopedLocale scope;
    platform::ManualMainQueueScope main;
    std::int64_t cents = 0;
    std::shared_ptr<CurrencyUITextField> field = std::make_shared<CurrencyUITextField>(
        platform::view::Binding<std::int64_t>([this] { return cents; }, [this](std::int64_t c) { cents = c; }), 17,
        "Amount");
    platform::TextFieldDriver user{*field};
};

TEST(CurrencyUITextField, FillsFromTheRightLikeATill) {
    CentsField f;
    f.main->runUntilIdle();
    const struct {
        std::string_view key;
        std::string text;
        std::int64_t cents;
    } keys[] = {{"1", "$0.01", 1},  {"2", "$0.12", 12}, {"3", "$1.23", 123},
                {"⌫", "$0.12", 12}, {"⌫", "$0.01", 1},  {"⌫", "", 0}};
    std::int64_t before = 0;
    for (const auto& k : keys) {
        k.key == "⌫" ? f.user.deleteBackward() : f.user.type(k.key);
        EXPECT_EQ(f.field->text(), k.text) << "after " << k.key;
        EXPECT_EQ(f.cents, std::exchange(before, k.cents)) << "stored on a later turn, never inside the key's event";
        f.main->runUntilIdle();
        EXPECT_EQ(f.cents, k.cents) << "after " << k.key;
    }
    EXPECT_EQ(f.field->placeholder(), "Amount") << "shows once the text is empty";
}

TEST(CurrencyUITextField, EveryTouchPutsTheCaretBackAtTheEnd) {
    CentsField f;
    f.user.type("123");
    f.user.placeCaret(1);
    f.user.tap();
    EXPECT_EQ(f.field->selectedTextRange(), (platform::TextRange{5, 0}));
    f.user.placeCaret(1);
    f.user.deleteBackward();
    EXPECT_EQ(f.field->text(), "$0.12") << "delete drops the last digit, wherever the caret is";
}

TEST(CurrencyUITextField, PastedTextKeepsOnlyItsDigits) {
    struct Row {
        const char* locale;
        std::string pasted;
        std::string text;
        std::int64_t cents;
        const char* why;
    };
    const Row rows[] = {
        {"en_US", "abc", "", 0, "no digits"},
        {"en_US", "$1,2a3", "$1.23", 123, "symbols, separators and letters vanish"},
        {"en_US", "٣", "$0.03", 3, "a digit of another script counts with its value"},
        {"en_US", "Ⅻ", "", 0, "a numeral worth twelve is no digit string"},
        {"en_US", std::string(40, '9'), "$9,999,999,999,999.99", 999999999999999, "only the first fifteen digits"},
        {"de_DE", "123456", "1.234,56\u00A0€", 123456, "the device's currency and separators"},
    };
    for (const Row& row : rows) {
        CentsField f(row.locale);
        f.user.paste(row.pasted);
        f.main->runUntilIdle();
        EXPECT_EQ(f.field->text(), row.text) << row.why;
        EXPECT_EQ(f.cents, row.cents) << row.why;
    }
}

TEST(CurrencyTextField, TheParentsOverrideIsTakenAndLogged) {
    platform::ScopedLocale locale("en_US", "UTC");
    platform::ManualMainQueueScope main;
    platform::ConsoleCapture console;
    std::int64_t forced = 0;
    platform::view::ScreenHost host([&](platform::view::Scope& s) {
        auto cents = s.state("cents", std::int64_t{250});
        platform::view::Binding<std::int64_t> force([&] { return forced == 0 ? cents.get() : forced; }, [](auto) {});
        return s.view(tovi::CurrencyTextField(cents.binding(), force, 17, "Amount"));
    });
    const auto field = platform::view::inspect(host.tree()).props<platform::view::TextFieldProps>().field;
    EXPECT_EQ(field->text(), "$2.50");
    EXPECT_TRUE(console.lines().empty()) << "the same value twice is no override";

    forced = 700;
    host.invalidate();
    main->runUntilIdle();
    EXPECT_EQ(field->text(), "$7.00");
    EXPECT_EQ(console.lines(), std::vector<std::string>{"The parent of this SwiftUI view is forcing a value update"});
}

}  // namespace
