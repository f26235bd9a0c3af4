// The card number element: brand-following mask, Luhn, events with brand, bin and last four.

#include <gtest/gtest.h>

#include "ElementTestSupport.hpp"
#include "KorvaneElements/CardNumberUITextField.hpp"
#include "platform/view/TextFieldDriver.hpp"

namespace {

using namespace korvane::elements;
using elements_test::configError;
using elements_test::EventLog;
using elements_test::Flags;
using elements_test::flagsOf;
using elements_test::shown;

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

TEST_F(CardNumberTest, ACompleteVisaPublishesOneEventPerKey) {
    EventLog log(*number);
    platform::TextFieldDriver(*number).type("4242424242424242");
    EXPECT_EQ(log.events.size(), 17u) << "focus, then one textChange per key";
    EXPECT_EQ(flagsOf(log.last()), (Flags{true, false, true, true}));
    EXPECT_EQ(log.last().details, (std::vector<ElementEventDetails>{
                                      {"cardBrand", "visa"}, {"cardLast4", "4242"}, {"cardBin", "42424242"}}));
    EXPECT_EQ(number->cardMetadata(), (CardMetadata{"4242", "42424242", "visa"}));
    EXPECT_EQ(number->isComplete(), true) << "the editing-changed event runs after insertText's own update";
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

TEST_F(CardNumberTest, NumberAboveTheIntegerMaximumHasNoBrand) {
    platform::TextFieldDriver user(*number);
    user.type("4");  // the visa mask, 19 digits, stays in force from here on
    number->setText("9999999999999999999");
    EXPECT_EQ(shown(*number), "9999999999999999999");
    EXPECT_FALSE(number->cardBrand().has_value() && number->cardBrand()->bestMatchCardBrand);
    EXPECT_EQ(number->cardMetadata().cardBrand, "unknown");
    EXPECT_FALSE(number->metadata().complete);
}

TEST_F(CardNumberTest, PastedNumbers) {
    EXPECT_EQ(number->keyboardType(), platform::KeyboardType::asciiCapableNumberPad);
    const Flags done{true, false, true, true};
    const CardMetadata visa{"4242", "42424242", "visa"};
    const std::string v16 = "4242424242424242";
    struct Case {
        std::string pasted, value;
        Flags flags;
        CardMetadata card;
        std::size_t maskSize;  // 0: no brand mask yet, the default one holds
        const char* why;
    };
    const Case cases[] = {
        {"37828224631000599", "378282246310005", done, {"0005", "378282", "americanExpress"}, 17, "amex: 15, bin 6"},
        {"4242424242424241", "4242424242424241", {false, false, false, true}, {{}, {}, "visa"}, 22, "check digit"},
        {"1234 5678 9012 3456 7890", "1234567890123456", {false, false, false, false}, {}, 0, "the default holds 16"},
        {"4242-4242-4242-4242", v16, done, visa, 22, "dashes"},
        {"card: 4242 4242 4242 4242!", v16, done, visa, 22, "letters and punctuation"},
        {"😀4242👨‍👩‍👧4242 4242\t4242😀", v16, done, visa, 22, "emoji and a tab"},
        {v16 + "424242424242", v16, done, visa, 22, "too long for an integer: no brand, so the default mask cuts"},
        {"----", "", {true, true, true, false}, {}, 0, "nothing but dashes: refused, the first flags stay"},
    };
    for (const auto& c : cases) {
        auto field = std::make_shared<CardNumberUITextField>();
        EventLog log(*field);
        platform::TextFieldDriver user(*field);
        user.paste(c.pasted);
        EXPECT_EQ(shown(*field), c.value) << c.why;
        EXPECT_EQ(flagsOf(field->metadata()), c.flags) << c.why;
        EXPECT_EQ(field->cardMetadata(), c.card) << c.why;
        EXPECT_EQ(field->cardMask() ? field->cardMask()->size() : 0u, c.maskSize) << c.why;
        EXPECT_EQ(log.types().back(), c.value.empty() ? "focus" : "textChange") << c.why;
        // The brand always; the last four and the bin only of a complete number.
        EXPECT_EQ(log.last().details.size(), c.value.empty() ? 0u : c.card.cardBin ? 3u : 1u) << c.why;
        user.leave();
    }
}

TEST_F(CardNumberTest, EmptyFieldFlags) {
    EventLog log(*number);
    platform::TextFieldDriver user(*number);
    user.type("4");
    user.deleteBackward();
    EXPECT_EQ(flagsOf(log.last()), (Flags{false, true, false, false}));
    EXPECT_EQ(log.last().details, (std::vector<ElementEventDetails>{{"cardBrand", "unknown"}}));
}

TEST_F(CardNumberTest, SetConfigAllowsOnlyTheCopyOptions) {
    EXPECT_EQ(configError(*number, std::nullopt), ElementConfigError::configNotAllowed);
    EXPECT_EQ(configError(*number, TextElementOptions{.mask = ElementMask{CardBrand::digitMaskRegex()}}),
              ElementConfigError::configNotAllowed)
        << "a mask alone is refused";
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

TEST_F(CardNumberTest, TheBinShortensSoThatFourDigitsStayHidden) {
    struct Case {
        int length;
        const char* bin;
        const char* why;
    };
    const Case cases[] = {
        {8, "", "bin and last four would be every digit"},
        {10, "42", "a six-digit bin would leave none hidden"},
        {12, "4242", "four hidden between"},
        {14, "424242", "the usual six already hide four"},
    };
    for (const auto& c : cases) {
        auto field = std::make_shared<CardNumberUITextField>();
        field->setCardTypes(std::vector<CardBrandDetails>{
            CardBrandDetails("short", {std::int64_t{42}}, CardBrand::cvcMask3(), {4}, {c.length})});
        EventLog log(*field);
        std::string digits;
        while (digits.size() < static_cast<std::size_t>(c.length)) digits += "42";
        platform::TextFieldDriver(*field).paste(digits);
        ASSERT_TRUE(field->metadata().complete) << c.why;
        EXPECT_EQ(field->cardMetadata(), (CardMetadata{"4242", c.bin, "short"})) << c.why;
        EXPECT_EQ(log.last().details.back().message, c.bin) << c.why << ": the event says the same";
    }
}

}  // namespace
