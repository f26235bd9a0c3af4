// The verification code element, alone and linked to a number element.

#include <gtest/gtest.h>

#include "ElementTestSupport.hpp"
#include "KorvaneElements/CardVerificationCodeUITextField.hpp"
#include "platform/view/TextFieldDriver.hpp"

namespace {

using namespace korvane::elements;
using elements_test::EventLog;
using elements_test::Flags;
using elements_test::flagsOf;

struct CvcTest : ::testing::Test {
    void SetUp() override {
        cvc = std::make_shared<CardVerificationCodeUITextField>();
        number = std::make_shared<CardNumberUITextField>();
    }
    void TearDown() override {
        if (auto* f = platform::TextField::currentFirstResponder()) f->resignFirstResponder();
    }
    void link() { cvc->setConfig(CardVerificationCodeOptions{.cardNumberUITextField = number}); }
    std::string shown() const { return cvc->getValue(elements_test::valueKey()).value_or("<none>"); }

    elements_test::TelemetryCapture telemetry;
    std::shared_ptr<CardVerificationCodeUITextField> cvc;
    std::shared_ptr<CardNumberUITextField> number;
};

TEST_F(CvcTest, UnlinkedTakesThreeOrFourDigits) {
    struct Case {
        const char* pasted;
        const char* text;
        bool complete;
        const char* why;
    };
    const Case cases[] = {
        {"123", "123", true, "three digits"},
        {"1234", "1234", true, "four digits"},
        {"12", "12", false, "too short"},
        {"12345", "1234", true, "the default mask holds four"},
        {"1 2a3", "123", true, "blanks and letters dropped"},
    };
    platform::TextFieldDriver user(*cvc);
    for (const auto& c : cases) {
        cvc->setText("");
        user.paste(c.pasted);
        EXPECT_EQ(shown(), c.text) << c.why;
        EXPECT_EQ(cvc->metadata().complete, c.complete) << c.why;
        EXPECT_EQ(cvc->isComplete(), c.complete) << c.why;
    }
}

TEST_F(CvcTest, LinkedFollowsTheBrandAndAnnouncesMaskChanges) {
    link();
    EventLog log(*cvc);
    platform::TextFieldDriver(*cvc).type("123");
    EXPECT_FALSE(cvc->metadata().maskSatisfied) << "no brand yet: four are expected";

    cvc->setText("1234");
    log.events.clear();
    platform::TextFieldDriver numberUser(*number);
    numberUser.type("4");
    ASSERT_EQ(log.types(), (std::vector<std::string>{"blur", "maskChange"}));
    EXPECT_EQ(flagsOf(log.last()), (Flags{false, false, true, false})) << "1234 stays but no longer fits";
    EXPECT_EQ(shown(), "1234") << "the text is not rewritten";
    EXPECT_EQ(cvc->cvcMask()->size(), 3u);

    numberUser.type("242");
    EXPECT_EQ(log.types().size(), 2u) << "same brand, no second maskChange";

    numberUser.deleteBackward(4);
    EXPECT_EQ(cvc->cvcMask()->size(), 3u) << "an empty number has no best match";
    numberUser.type("34");
    EXPECT_EQ(log.types().back(), "maskChange");
    EXPECT_EQ(cvc->cvcMask()->size(), 4u);
    EXPECT_EQ(flagsOf(log.last()), (Flags{true, false, true, true}));

    numberUser.deleteBackward(2);
    numberUser.type("4");
    cvc->setText("");
    platform::TextFieldDriver(*cvc).type("1234");
    EXPECT_EQ(shown(), "123") << "new typing is cut to the brand's length";
    EXPECT_TRUE(cvc->metadata().complete);
}

TEST_F(CvcTest, TextElementOptionsAreAlwaysRefused) {
    EXPECT_EQ(elements_test::configError(*cvc, std::nullopt), ElementConfigError::configNotAllowed);
    EXPECT_EQ(elements_test::configError(*cvc, TextElementOptions{.enableCopy = true}),
              ElementConfigError::configNotAllowed);
    cvc->setConfig(CardVerificationCodeOptions{.enableCopy = true});
    EXPECT_TRUE(cvc->rightView());
}

}  // namespace
