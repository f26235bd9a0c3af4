// The card number element: brand-following mask, Luhn, events with brand, bin and last four.

#include <gtest/gtest.h>

#include "ElementTestSupport.hpp"
#include "KorvaneElements/CardNumberUITextField.hpp"
#include "platform/view/TextFieldDriver.hpp"

namespace {

using namespace korvane::elements;
using elements_test::EventLog;
using elements_test::Flags;
using elements_test::flagsOf;

std::string shown(const CardNumberUITextField& f) {
    // The value drops blanks; the mask's groups are checked through the count of positions.
    return f.getValue().value_or("<none>");
}

std::vector<ElementEventDetails> detailsOf(const ElementEvent& e) {
    return e.details;
}

struct CardNumberTest : ::testing::Test {
    void SetUp() override { number = std::make_shared<CardNumberUITextField>(); }
    void TearDown() override {
        number->resignFirstResponder();
        CardBrand::addCardBrands(CardBrand::DefaultCardBrands());
    }
    elements_test::TelemetryCapture telemetry;
    std::shared_ptr<CardNumberUITextField> number;
};

TEST(Luhn, Table) {
    struct Case {
        const char* text;
        bool valid;
        const char* why;
    };
    const Case cases[] = {
        {"4242424242424242", true, "a valid test number"},
        {"4242424242424241", false, "wrong check digit"},
        {"378282246310005", true, "odd length"},
        {"0", true, "a lone zero sums to 0"},
        {"", false, "empty"},
        {"4242 4242", false, "a blank is no digit"},
        {"٤٢", false, "digits of another script"},
        {"18", true, "1 doubled is 2, plus 8"},
        {"91", true, "9 at an odd index adds 9: 1 + 9"},
        {"59", true, "5 doubled minus 9 is 1, plus 9"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(luhnValid(c.text), c.valid) << c.text << ": " << c.why;
    }
}

TEST_F(CardNumberTest, TypingAVisaOneAssertionPerKeystroke) {
    platform::TextFieldDriver user(*number);
    const std::string digits = "4242424242424242";
    const std::string expected[] = {"4",
                                    "42",
                                    "424",
                                    "4242",
                                    "4242 4",
                                    "4242 42",
                                    "4242 424",
                                    "4242 4242",
                                    "4242 4242 4",
                                    "4242 4242 42",
                                    "4242 4242 424",
                                    "4242 4242 4242",
                                    "4242 4242 4242 4",
                                    "4242 4242 4242 42",
                                    "4242 4242 4242 424",
                                    "4242 4242 4242 4242"};
    EventLog log(*number);
    for (std::size_t i = 0; i < digits.size(); ++i) {
        user.type(digits.substr(i, 1));
        // The copy icon puts the raw text on the pasteboard; compare through the value and the
        // event count instead: one textChange per key.
        std::string value = expected[i];
        std::erase(value, ' ');
        EXPECT_EQ(shown(*number), value) << "key " << i;
    }
    EXPECT_EQ(log.events.size(), 1u + digits.size()) << "focus, then one textChange per key";
    EXPECT_EQ(flagsOf(log.last()), (Flags{true, false, true, true}));
    EXPECT_EQ(detailsOf(log.last()), (std::vector<ElementEventDetails>{
                                         {"cardBrand", "visa"}, {"cardLast4", "4242"}, {"cardBin", "42424242"}}));
    EXPECT_EQ(number->cardMetadata(), (CardMetadata{"4242", "42424242", "visa"}));
    EXPECT_EQ(number->isComplete(), true) << "the editing-changed event runs after insertText's own update";
}

TEST_F(CardNumberTest, MaskGroupsFollowTheBrand) {
    platform::TextFieldDriver user(*number);
    EXPECT_EQ(number->keyboardType(), platform::KeyboardType::asciiCapableNumberPad);
    user.paste("37828224631000599");
    EventLog log(*number);
    user.leave();
    EXPECT_EQ(shown(*number), "378282246310005") << "amex holds 15 digits";
    EXPECT_EQ(flagsOf(number->metadata()), (Flags{true, false, true, true}));
    EXPECT_EQ(number->cardMetadata(), (CardMetadata{"0005", "378282", "americanExpress"}))
        << "bin of 6 below 16 digits";
    ASSERT_TRUE(number->cardMask());
    EXPECT_EQ(number->cardMask()->size(), 17u);
}

TEST_F(CardNumberTest, DefaultMaskHoldsSixteenDigitsUntilABrandIsKnown) {
    platform::TextFieldDriver user(*number);
    user.paste("1234 5678 9012 3456 7890");
    EXPECT_EQ(shown(*number), "1234567890123456");
    EXPECT_FALSE(number->cardMask());
    EXPECT_EQ(number->cardMetadata().cardBrand, "unknown");
}

TEST_F(CardNumberTest, ABrandThatStopsMatchingLeavesItsMask) {
    platform::TextFieldDriver user(*number);
    user.type("4");
    user.deleteBackward();
    user.type("3");
    ASSERT_TRUE(number->cardMask());
    EXPECT_EQ(number->cardMask()->size(), CardBrand::VISA().cardNumberMaskInput.size()) << "visa's mask stays";
    user.type("4");
    EXPECT_EQ(number->cardMask()->size(), CardBrand::AMERICAN_EXPRESS().cardNumberMaskInput.size());
}

TEST_F(CardNumberTest, LuhnFailureWithAValidLength) {
    EventLog log(*number);
    platform::TextFieldDriver(*number).paste("4242424242424241");
    EXPECT_EQ(flagsOf(log.last()), (Flags{false, false, false, true}));
    EXPECT_EQ(detailsOf(log.last()), (std::vector<ElementEventDetails>{{"cardBrand", "visa"}}));
    EXPECT_EQ(number->cardMetadata(), (CardMetadata{std::nullopt, std::nullopt, "visa"}));
}

TEST_F(CardNumberTest, NumberAboveTheIntegerMaximumHasNoBrand) {
    platform::TextFieldDriver user(*number);
    user.type("4");  // the visa mask, 19 digits, stays in force from here on
    number->setText("9999999999999999999");
    EXPECT_EQ(shown(*number), "9999999999999999999");
    EXPECT_FALSE(number->cardBrand().has_value() && number->cardBrand()->bestMatchCardBrand);
    EXPECT_EQ(number->cardMetadata().cardBrand, "unknown");
    EXPECT_FALSE(number->metadata().complete);
}

TEST_F(CardNumberTest, PastedNoiseIsDroppedAndTheRestIsAVisa) {
    struct Case {
        const char* pasted;
        const char* value;
        bool complete;
        const char* why;
    };
    const Case cases[] = {
        {"4242-4242-4242-4242", "4242424242424242", true, "dashes"},
        {"card: 4242 4242 4242 4242!", "4242424242424242", true, "letters and punctuation"},
        {"😀4242👨‍👩‍👧4242 4242\t4242😀", "4242424242424242", true, "emoji and a tab"},
        {"4242424242424242424242424242", "4242424242424242", true,
         "too long to read as an integer: no brand yet, so the default mask cuts it to 16"},
        {"----", "", false, "nothing but dashes"},
    };
    for (const auto& c : cases) {
        auto field = std::make_shared<CardNumberUITextField>();
        EventLog log(*field);
        platform::TextFieldDriver user(*field);
        user.paste(c.pasted);
        EXPECT_EQ(shown(*field), c.value) << c.why;
        EXPECT_EQ(field->metadata().complete, c.complete) << c.why;
        EXPECT_EQ(log.types().back(), std::string(*c.value ? "textChange" : "focus")) << c.why;
        user.leave();
    }
}

TEST_F(CardNumberTest, DeletingFromTheMiddleRegroupsTheDigits) {
    platform::TextFieldDriver user(*number);
    user.type("4242424242424242");
    user.placeCaret(7);  // after "4242 42"
    user.deleteBackward();
    EXPECT_EQ(shown(*number), "424244242424242") << "the sixth digit is gone and the groups close up";
    EXPECT_FALSE(number->metadata().maskSatisfied);
    EXPECT_EQ(number->cardMetadata(), (CardMetadata{std::nullopt, std::nullopt, "visa"}));

    EventLog log(*number);
    user.placeCaret(5);
    user.deleteBackward();  // the blank before the caret: the mask puts it straight back
    EXPECT_EQ(shown(*number), "424244242424242");
    EXPECT_TRUE(log.events.empty()) << "the text came back as it was: nothing to publish";
}

TEST_F(CardNumberTest, EmptyFieldFlags) {
    EventLog log(*number);
    platform::TextFieldDriver user(*number);
    user.type("4");
    user.deleteBackward();
    EXPECT_EQ(flagsOf(log.last()), (Flags{false, true, false, false}));
    EXPECT_EQ(detailsOf(log.last()), (std::vector<ElementEventDetails>{{"cardBrand", "unknown"}}));
}

TEST_F(CardNumberTest, SetConfigAllowsOnlyTheCopyOptions) {
    EXPECT_THROW(number->setConfig(std::nullopt), ElementConfigException);
    try {
        number->setConfig(TextElementOptions{.mask = ElementMask{CardBrand::digitMaskRegex()}});
        ADD_FAILURE() << "a mask alone is refused";
    } catch (const ElementConfigException& e) {
        EXPECT_EQ(e.error(), ElementConfigError::configNotAllowed);
    }
    number->setConfig(TextElementOptions{
        .mask = ElementMask{CardBrand::digitMaskRegex()}, .enableCopy = true, .getValueType = ElementValueType::int_});
    EXPECT_TRUE(number->rightView());
    EXPECT_EQ(number->getValueType(), ElementValueType::string) << "the host's value type is dropped";
    platform::TextFieldDriver(*number).paste("4242424242424242");
    EXPECT_EQ(shown(*number), "4242424242424242") << "the host's one-digit mask was dropped";
}

TEST_F(CardNumberTest, CardTypesReplaceTheCatalogueAndReadAsNothing) {
    number->setCardTypes(
        std::vector<CardBrandDetails>{CardBrandDetails("acme", {std::int64_t{42}}, CardBrand::cvcMask3(), {4}, {8})});
    EXPECT_FALSE(number->cardTypes());
    number->setCardTypes(std::nullopt);
    platform::TextFieldDriver(*number).paste("42424242");
    EXPECT_EQ(number->cardMetadata().cardBrand, "acme");
    EXPECT_TRUE(number->metadata().maskSatisfied);
}

}  // namespace
