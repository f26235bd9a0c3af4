// The dollars entry field as a person uses it: one key at a time through the platform text
// field, with the text and bound value after every key, and the caret apart from the text.

#include <gtest/gtest.h>

#include "ToviUI/CurrencyTextFieldSwiftUIWrapper.hpp"
#include "platform/Text.hpp"
#include "platform/testing/ManualMainQueue.hpp"
#include "platform/testing/ScopedLocale.hpp"
#include "platform/view/TextFieldDriver.hpp"

namespace {

using platform::view::Binding;
using tovi::CurrencyTextFieldSwiftUIWrapper;
constexpr std::string_view kDelete = "⌫";

// A field wired as the custom amount row wires it; `changeWrapper` may alter it first.
struct DollarsField {
    explicit DollarsField(const char* locale, void (*changeWrapper)(DollarsField&) = nullptr) : scope(locale, "UTC") {
        if (changeWrapper) changeWrapper(*this);
        coordinator = wrapper.makeCoordinator();
        field = wrapper.makeUIView(*coordinator);
    }
    void press(std::string_view key) {
        key == kDelete ? user().deleteBackward() : user().type(key);
        main->runUntilIdle();
    }
    // "$12|,345": the text with the caret at the bar.
    [[nodiscard]] std::string withCaret() const {
        std::u16string text = platform::utf8ToUtf16(*field->text());
        return platform::utf16ToUtf8(text.insert(field->selectedTextRange().location, u"|"));
    }
    void place(std::string_view marked) {
        const std::size_t bar = marked.find('|');
        field->setText(std::string(marked.substr(0, bar)) + std::string(marked.substr(bar + 1)));
        user().tap();
        user().placeCaret(platform::utf16Length(marked.substr(0, bar)));
    }
    [[nodiscard]] platform::TextFieldDriver user() const { return platform::TextFieldDriver(*field); }

    platform::ScopedLocale scope;
    platform::ManualMainQueueScope main;
    std::optional<double> value;
    bool responder = false;
    CurrencyTextFieldSwiftUIWrapper wrapper{.value = {[this] { return value; }, [this](auto v) { value = v; }},
                                            .alwaysShowFractions = true,
                                            .currencySymbol = "$"};
    std::shared_ptr<CurrencyTextFieldSwiftUIWrapper::Coordinator> coordinator;
    std::shared_ptr<platform::TextField> field;
};

struct Keystroke {
    std::string_view key;
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

TEST(CurrencyTextField, TypesOneKeyAtATime) {
    typeKeys("en_US", {{"7", "$7", 7},
                       {kDelete, "", std::nullopt},  // the only character gone: no value
                       {"1", "$1", 1},
                       {"2", "$12", 12},
                       {".", "$12.", 12},  // the just typed point stays
                       {"3", "$12.3", 12.3},
                       {"4", "$12.34", 12.34},
                       {"5", "$12.34", 12.34},  // a third fraction digit is refused
                       {kDelete, "$12.3", 12.3},
                       {kDelete, "$12.", 12},
                       {kDelete, "$12", 12},
                       {"a", "$12", 12},  // letters do not count
                       {"3", "$123", 123},
                       {"4", "$1,234", 1234}});
    // The comma is the separator, appended after the symbol; the given "$" replaces the euro.
    typeKeys("de_DE", {{"1", "1\u00A0$", 1},
                       {"2", "12\u00A0$", 12},
                       {".", "12\u00A0$", 12},
                       {",", "12\u00A0$,", 12},
                       {"3", "12,3\u00A0$", 12.3},
                       {"4", "12,34\u00A0$", 12.34},
                       {"5", "12,34\u00A0$", 12.34}});
}

TEST(CurrencyTextField, EdgeKeysAndPastes) {
    struct Row {
        std::string before;  // typed first
        std::string pasted;
        std::string text;
        std::optional<double> value;
        const char* why;
    } const rows[] = {
        {"", ".", "$0.", 0.0, "a lone separator is zero, not absent"},
        {"123456789", "0", "$123,456,789", 123456789, "the tenth whole digit is refused"},
        {"", std::string(40, '9'), "", std::nullopt, "forty digits, beyond what a double holds exactly: refused"},
        {"", "1e9", "$19", 19, "only digits count, the exponent is no number"},
        {"", "-5", "$5", 5, "no sign"},
        {"", "٣", "", std::nullopt, "an Arabic-Indic digit is not one of 0 to 9"},
        {"12", "😀", "$12", 12, "an emoji changes nothing"},
        {"12", "\u00A0", "$12", 12, "neither does a no-break space"},
        {"1.5", "1.2", "$1.5", 1.5, "a second separator refuses the whole paste"},
    };
    for (const Row& row : rows) {
        DollarsField f("en_US");
        f.user().type(row.before);
        f.user().paste(row.pasted);
        f.main->runUntilIdle();
        EXPECT_EQ(f.field->text(), row.text) << row.why;
        EXPECT_EQ(f.value, row.value) << row.why;
    }
}

TEST(CurrencyTextFieldCaret, KeepsItsDistanceFromTheEndOnALaterTurn) {
    struct Row {
        const char* locale;
        std::string before;
        std::string_view key;
        std::string after;
        const char* why;
    } const rows[] = {
        {"en_US", "$123|", "4", "$1,234|", "typing at the end stays at the end"},
        {"en_US", "$12|,345", kDelete, "$1|,345", "a digit deleted in the middle"},
        {"en_US", "$1,|345", kDelete, "$1|,345", "deleting the grouping comma steps over it"},
        {"en_US", "$1|,345", "2", "$12|,345", "a digit typed in the middle"},
        {"de_DE", "12.34|5\u00A0$", kDelete, "1.23|5\u00A0$", "regrouped under de_DE"},
        {"de_DE", "1.2|34\u00A0$", ",", "12,|34\u00A0$", "a separator typed in the middle"},
    };
    for (const Row& row : rows) {
        DollarsField f(row.locale);
        f.place(row.before);
        f.press(row.key);
        EXPECT_EQ(f.withCaret(), row.after) << row.why;
    }
    DollarsField f("en_US");
    f.place("$12|,345");
    f.user().deleteBackward();
    EXPECT_EQ(f.withCaret(), "$1,345|") << "the platform's own placement, before the deferred one";
    f.main->runUntilIdle();
    EXPECT_EQ(f.withCaret(), "$1|,345");
    f.user().type("a");
    EXPECT_EQ(f.withCaret(), "$1|,345") << "a letter changes nothing, so the caret never moves";
}

TEST(CurrencyTextField, TheParentsEchoLeavesTextAndCaretButAnOutsideValueRewrites) {
    DollarsField f("en_US");
    for (const char* key : {"1", "2", "."}) f.press(key);
    f.user().placeCaret(1);
    f.wrapper.updateUIView(*f.field, *f.coordinator);
    EXPECT_EQ(f.withCaret(), "$|12.") << "the value the field just produced comes back";
    f.value = 7.5;
    f.wrapper.updateUIView(*f.field, *f.coordinator);
    EXPECT_EQ(f.field->text(), "$7.50");
    f.value = std::nullopt;
    f.wrapper.updateUIView(*f.field, *f.coordinator);
    EXPECT_EQ(f.field->text(), "");

    DollarsField halving("en_US", [](DollarsField& h) {
        h.wrapper.value = {[&h] { return h.value; }, [&h](std::optional<double> v) { h.value = v ? *v / 2 : v; }};
    });
    halving.press("8");
    EXPECT_EQ(halving.coordinator->internalValue, 4) << "what a transforming binding kept";
}

TEST(CurrencyTextField, LeavingShowsEveryFractionDigitAndReportsLater) {
    static int done = 0;
    DollarsField f("en_US", [](DollarsField& g) {
        g.wrapper.isResponder = Binding<bool>([&g] { return g.responder; }, [&g](bool v) { g.responder = v; });
        g.wrapper.onDoneClick = [] { ++done; };
    });
    f.user().type("12.5");
    EXPECT_FALSE(f.responder) << "not while the platform reports the focus";
    f.main->runUntilIdle();
    EXPECT_TRUE(f.responder);
    f.user().leave();
    EXPECT_EQ(f.field->text(), "$12.50");
    f.main->runUntilIdle();
    EXPECT_FALSE(f.responder);
    EXPECT_EQ(done, 1);

    f.responder = true;
    f.wrapper.updateUIView(*f.field, *f.coordinator);
    EXPECT_TRUE(f.field->isFirstResponder()) << "the parent's request takes focus";
    f.user().leave();
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
    f.user().tap();
    f.coordinator->textFieldShouldReturn(*f.field);
    EXPECT_FALSE(f.field->isFirstResponder()) << "no superview: the field lets go";
    row->addSubview(f.field);
    f.user().tap();
    EXPECT_TRUE(f.coordinator->textFieldShouldReturn(*f.field));
    EXPECT_TRUE(next->isFirstResponder());
}

}  // namespace
