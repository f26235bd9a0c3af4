// The dollars entry field as a person uses it: one key at a time through the platform text
// field, with the text and bound value after every key, and the caret apart from the text.

#include <gtest/gtest.h>

#include <string>

#include "ToviUI/CurrencyTextFieldSwiftUIWrapper.hpp"
#include "platform/Text.hpp"
#include "platform/testing/ManualMainQueue.hpp"
#include "platform/testing/ScopedLocale.hpp"
#include "platform/view/TextFieldDriver.hpp"

namespace {

using tovi::CurrencyTextFieldSwiftUIWrapper;
constexpr const char* kDelete = "⌫";

// A field wired as the custom amount row wires it, with its bound value in `value`.
struct DollarsField {
    explicit DollarsField(const char* locale) : scope(locale, "UTC") {}

    void press(std::string_view key) {
        if (key == kDelete) {
            user.deleteBackward();
        } else {
            user.type(key);
        }
        main->runUntilIdle();
    }
    // "$12|,345": the text with the caret at the bar.
    [[nodiscard]] std::string withCaret() const {
        std::u16string text = platform::utf8ToUtf16(*field->text());
        text.insert(field->selectedTextRange().location, u"|");
        return platform::utf16ToUtf8(text);
    }
    void place(std::string_view marked) {
        const std::size_t bar = marked.find('|');
        field->setText(std::string(marked.substr(0, bar)) + std::string(marked.substr(bar + 1)));
        user.tap();
        user.placeCaret(platform::utf16Length(marked.substr(0, bar)));
    }

    platform::ScopedLocale scope;
    platform::ManualMainQueueScope main;
    std::optional<double> value;
    CurrencyTextFieldSwiftUIWrapper wrapper{
        .value = {[this] { return value; }, [this](std::optional<double> v) { value = v; }},
        .alwaysShowFractions = true,
        .currencySymbol = "$"};
    std::shared_ptr<CurrencyTextFieldSwiftUIWrapper::Coordinator> coordinator = wrapper.makeCoordinator();
    std::shared_ptr<platform::TextField> field = wrapper.makeUIView(*coordinator);
    platform::TextFieldDriver user{*field};
};

struct Keystroke {
    const char* key;
    std::string text;
    std::optional<double> value;
};

void typeKeys(const char* locale, const std::vector<Keystroke>& keys) {
    DollarsField f(locale);
    for (const Keystroke& k : keys) {
        f.press(k.key);
        EXPECT_EQ(f.field->text(), k.text) << locale << " after " << k.key;
        EXPECT_EQ(f.value, k.value) << locale << " after " << k.key;
        EXPECT_EQ(f.coordinator->internalValue, k.value) << "the field remembers what it produced";
    }
}

TEST(CurrencyTextField, TypesOneKeyAtATimeUnderEnUs) {
    typeKeys("en_US", {{"1", "$1", 1},
                       {"2", "$12", 12},
                       {".", "$12.", 12},  // the just typed point stays
                       {"3", "$12.3", 12.3},
                       {"4", "$12.34", 12.34},
                       {"5", "$12.34", 12.34},  // a third fraction digit is refused
                       {".", "$12.34", 12.34},  // so is a second point
                       {kDelete, "$12.3", 12.3},
                       {kDelete, "$12.", 12},
                       {kDelete, "$12", 12},
                       {"a", "$12", 12},  // letters do not count
                       {"3", "$123", 123},
                       {"4", "$1,234", 1234}});
}

TEST(CurrencyTextField, TypesOneKeyAtATimeUnderDeDe) {
    // The comma is the separator; the given "$" replaces the euro sign; the point is ignored.
    typeKeys("de_DE", {{"1", "1\u00A0$", 1},
                       {"2", "12\u00A0$", 12},
                       {".", "12\u00A0$", 12},
                       {",", "12\u00A0$,", 12},  // the separator is appended after the symbol
                       {"3", "12,3\u00A0$", 12.3},
                       {"4", "12,34\u00A0$", 12.34},
                       {"5", "12,34\u00A0$", 12.34},
                       {"5", "12,34\u00A0$", 12.34}});
}

TEST(CurrencyTextField, EdgeKeysAndPastes) {
    struct Row {
        std::string before;  // typed first
        std::string pasted;
        std::string text;
        std::optional<double> value;
        const char* why;
    };
    const Row rows[] = {
        {"", ".", "$0.", 0.0, "a lone separator is zero, not absent"},
        {"123456789", "0", "$123,456,789", 123456789, "the tenth whole digit is refused"},
        {"", std::string(40, '9'), "", std::nullopt, "forty digits are refused whole"},
        {"", "1" + std::string(400, '0'), "", std::nullopt, "beyond any double, refused by the digit limit"},
        {"", "1e9", "$19", 19, "only digits count, the exponent is no number"},
        {"", "-5", "$5", 5, "no sign"},
        {"", "٣", "", std::nullopt, "an Arabic-Indic digit is not one of 0 to 9"},
        {"12", "😀", "$12", 12, "an emoji changes nothing"},
        {"12", "\u00A0", "$12", 12, "neither does a no-break space"},
        {"", "abc", "", std::nullopt, "letters alone leave the field empty"},
        {"1.5", "1.2", "$1.5", 1.5, "a second separator refuses the whole paste"},
    };
    for (const Row& row : rows) {
        DollarsField f("en_US");
        f.user.type(row.before);
        f.user.paste(row.pasted);
        f.main->runUntilIdle();
        EXPECT_EQ(f.field->text(), row.text) << row.why;
        EXPECT_EQ(f.value, row.value) << row.why;
    }
}

TEST(CurrencyTextField, DeletingTheOnlyCharacterEmptiesTextValueAndMemory) {
    DollarsField f("en_US");
    f.press("7");
    f.press(kDelete);
    EXPECT_EQ(f.field->text(), "");
    EXPECT_EQ(f.value, std::nullopt);
    EXPECT_EQ(f.coordinator->internalValue, std::nullopt);
}

TEST(CurrencyTextFieldCaret, KeepsItsDistanceFromTheEnd) {
    struct Row {
        const char* locale;
        std::string before;
        const char* key;
        std::string after;
        const char* why;
    };
    const Row rows[] = {
        {"en_US", "$123|", "4", "$1,234|", "typing at the end stays at the end"},
        {"en_US", "$12|,345", kDelete, "$1|,345", "a digit deleted in the middle"},
        {"en_US", "$1,|345", kDelete, "$1|,345", "deleting the grouping comma steps over it"},
        {"en_US", "$1|,345", "2", "$12|,345", "a digit typed in the middle"},
        {"en_US", "$12|.5", "a", "$12|.5", "a refused letter leaves the caret"},
        {"de_DE", "12.34|5\u00A0$", kDelete, "1.23|5\u00A0$", "regrouped under de_DE"},
        {"de_DE", "1.2|34\u00A0$", ",", "12,|34\u00A0$", "a separator typed in the middle"},
    };
    for (const Row& row : rows) {
        DollarsField f(row.locale);
        f.place(row.before);
        f.press(row.key);
        EXPECT_EQ(f.withCaret(), row.after) << row.why;
    }
}

TEST(CurrencyTextFieldCaret, IsPlacedOnALaterTurnOfTheMainQueue) {
    DollarsField f("en_US");
    f.place("$12|,345");
    f.user.deleteBackward();
    EXPECT_EQ(f.withCaret(), "$1,345|") << "the platform's own placement, before the deferred one";
    f.main->runUntilIdle();
    EXPECT_EQ(f.withCaret(), "$1|,345");
    f.user.type("a");
    EXPECT_EQ(f.withCaret(), "$1|,345") << "a letter changes nothing, so the caret never moves";
}

TEST(CurrencyTextField, TheParentsEchoLeavesTextAndCaretButAnOutsideValueRewrites) {
    DollarsField f("en_US");
    for (const char* key : {"1", "2", "."}) f.press(key);
    f.user.placeCaret(1);
    f.wrapper.updateUIView(*f.field, *f.coordinator);
    EXPECT_EQ(f.withCaret(), "$|12.") << "the value the field just produced comes back";

    f.value = 7.5;
    f.wrapper.updateUIView(*f.field, *f.coordinator);
    EXPECT_EQ(f.field->text(), "$7.50");
    f.value = std::nullopt;
    f.wrapper.updateUIView(*f.field, *f.coordinator);
    EXPECT_EQ(f.field->text(), "");
    EXPECT_EQ(f.coordinator->internalValue, std::nullopt);
}

TEST(CurrencyTextField, RemembersWhatTheParentsBindingKept) {
    DollarsField f("en_US");
    f.wrapper.value = {[&] { return f.value; }, [&](std::optional<double> v) { f.value = v ? *v / 2 : v; }};
    f.coordinator = f.wrapper.makeCoordinator();
    f.field = f.wrapper.makeUIView(*f.coordinator);
    platform::TextFieldDriver(*f.field).type("8");
    EXPECT_EQ(f.coordinator->internalValue, 4) << "a binding that halves what it stores";
}

TEST(CurrencyTextField, LeavingShowsEveryFractionDigitAndReportsLater) {
    DollarsField f("en_US");
    bool responder = false;
    int done = 0;
    std::vector<bool> editing;
    f.wrapper.isResponder = platform::view::Binding<bool>([&] { return responder; }, [&](bool v) { responder = v; });
    f.wrapper.onDoneClick = [&] { ++done; };
    f.wrapper.onEditingChanged = [&](bool on) { editing.push_back(on); };
    f.coordinator = f.wrapper.makeCoordinator();
    f.field = f.wrapper.makeUIView(*f.coordinator);
    platform::TextFieldDriver user(*f.field);

    user.type("12.5");
    EXPECT_FALSE(responder) << "not while the platform reports the focus";
    f.main->runUntilIdle();
    EXPECT_TRUE(responder);
    user.leave();
    EXPECT_EQ(f.field->text(), "$12.50");
    EXPECT_EQ(done, 0);
    f.main->runUntilIdle();
    EXPECT_FALSE(responder);
    EXPECT_EQ(done, 1);
    EXPECT_EQ(editing, (std::vector<bool>{true, false}));

    responder = true;
    f.wrapper.updateUIView(*f.field, *f.coordinator);
    EXPECT_TRUE(f.field->isFirstResponder()) << "the parent's request takes focus";
    user.leave();
    f.wrapper.updateUIView(*f.field, *f.coordinator);
    EXPECT_FALSE(f.field->isFirstResponder()) << "but only once";
}

TEST(CurrencyTextField, ReturnMovesToTheFieldTaggedNextInTheSuperviewsSuperview) {
    DollarsField f("en_US");
    auto form = std::make_shared<platform::NativeView>();
    auto row = std::make_shared<platform::NativeView>();
    auto next = std::make_shared<platform::TextField>();
    next->setTag(1);
    form->addSubview(row);
    form->addSubview(next);
    f.user.tap();
    EXPECT_TRUE(f.coordinator->textFieldShouldReturn(*f.field));
    EXPECT_FALSE(f.field->isFirstResponder()) << "no superview: the field lets go";

    row->addSubview(f.field);
    f.user.tap();
    EXPECT_TRUE(f.coordinator->textFieldShouldReturn(*f.field));
    EXPECT_TRUE(next->isFirstResponder());
}

}  // namespace
