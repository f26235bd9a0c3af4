// The base secure element: masking through the user's keys, events, flags, configuration,
// the hidden text, mirroring and the copy icon.

#include <gtest/gtest.h>

#include "AnyCodable/JsonWriter.hpp"
#include "ElementTestSupport.hpp"
#include "KorvaneElements/CardBrand.hpp"
#include "KorvaneElements/ElementResources.hpp"
#include "KorvaneElements/ElementValueReference.hpp"
#include "KorvaneElements/KorvaneUIViewController.hpp"
#include "KorvaneElements/TextElementUITextField.hpp"
#include "platform/Pasteboard.hpp"
#include "platform/Uuid.hpp"
#include "platform/view/TextFieldDriver.hpp"

namespace {

using namespace korvane::elements;
using elements_test::EventLog;
using elements_test::Flags;
using elements_test::flagsOf;
using elements_test::shown;

TextElementOptions zipOptions() {
    return TextElementOptions{.mask = ElementMask(5, CardBrand::digitMaskRegex()),
                              .validation = compileElementRegex("^[0-9]{5}$")};
}

struct TextElementTest : ::testing::Test {
    void TearDown() override {
        if (auto* f = platform::TextField::currentFirstResponder()) f->resignFirstResponder();
    }
    platform::ManualMainQueueScope main;
    elements_test::TelemetryCapture telemetry;
};

TEST_F(TextElementTest, ConstructionPublishesReadyAndLogsInit) {
    auto element = std::make_shared<TextElementUITextField>();
    EXPECT_EQ(element->metadata(), (ElementMetadata{true, true, true, false}));
    EXPECT_EQ(element->isComplete(), std::nullopt);
    EXPECT_EQ(element->smartDashesType(), platform::SmartDashesType::no);
    EXPECT_EQ(telemetry.bodies().back(), R"({"elementId":")" + element->elementId() +
                                             R"(","message":"TextElementUITextField init","level":"info"})");
    EXPECT_EQ(platform::Uuid::parse(element->elementId()).has_value(), true);
}

TEST_F(TextElementTest, TypingAZipOneAssertionPerKeystroke) {
    auto zip = std::make_shared<TextElementUITextField>();
    zip->setConfig(zipOptions());
    EventLog log(*zip);
    platform::TextFieldDriver user(*zip);
    struct Step {
        const char* key;
        const char* text;
        Flags flags;
    };
    const Step steps[] = {
        {"9", "9", {false, false, false, false}},    {"a", "9", {false, false, false, false}},
        {"4", "94", {false, false, false, false}},   {"1", "941", {false, false, false, false}},
        {"0", "9410", {false, false, false, false}}, {"3", "94103", {true, false, true, true}},
        {"7", "94103", {true, false, true, true}},
    };
    for (const auto& s : steps) {
        user.type(s.key);
        EXPECT_EQ(shown(*zip), s.text) << "after key " << s.key;
        EXPECT_EQ(elements_test::flagsOf(zip->metadata()), s.flags) << "after key " << s.key;
    }
    // focus, then one textChange per visible change: the letter and the sixth digit changed nothing.
    EXPECT_EQ(log.types(), (std::vector<std::string>{"focus", "textChange", "textChange", "textChange", "textChange",
                                                     "textChange"}));
    EXPECT_EQ(zip->isComplete(), true);
    user.leave();
    EXPECT_EQ(log.last().type, "blur");
    EXPECT_EQ(flagsOf(log.last()), (Flags{true, false, true, true}));
}

TEST_F(TextElementTest, TextIsNeverReadableAndTheSameTextPublishesOnce) {
    auto element = std::make_shared<TextElementUITextField>();
    EventLog log(*element);
    element->setText("secret");
    EXPECT_EQ(element->text(), std::nullopt);
    EXPECT_EQ(element->platform::TextField::text(), std::nullopt);
    element->setText("secret");
    EXPECT_EQ(log.types(), (std::vector<std::string>{"textChange"}));
    EXPECT_EQ(flagsOf(log.last()), (Flags{true, false, true, true})) << "no mask: satisfied; no validation: valid";
    // The change is logged with the event itself, never the text.
    EXPECT_EQ(telemetry.bodies().back(),
              R"({"elementId":")" + element->elementId() +
                  R"(","event":{"type":"textChange","complete":true,"empty":false,"valid":true,"maskSatisfied":true,)"
                  R"("details":[]},"message":"TextElementUITextField textChange event","level":"info"})");
}

TEST_F(TextElementTest, DelegateMustBeTheLibrarysController) {
    struct Spy : platform::TextFieldDelegate {
        std::string seen;
        bool shouldChangeCharacters(platform::TextField&, platform::TextRange, std::string_view r) override {
            seen += r;
            return true;
        }
    };
    auto element = std::make_shared<TextElementUITextField>();
    auto ours = std::make_shared<KorvaneUIViewController>();
    auto spy = std::make_shared<Spy>();
    element->setDelegate(ours);
    element->setDelegate(spy);
    EXPECT_EQ(element->delegate(), ours) << "a foreign delegate is ignored";
    platform::TextFieldDriver(*element).type("4242");
    EXPECT_EQ(spy->seen, "") << "and never asked about the keys typed";
    element->setDelegate(nullptr);
    EXPECT_EQ(element->delegate(), ours) << "clearing is refused too";
}

TEST_F(TextElementTest, SetConfigValidatesTheMaskAndClearsWhatIsAbsent) {
    auto element = std::make_shared<TextElementUITextField>();
    element->setConfig(zipOptions());
    struct Bad {
        ElementMask mask;
        const char* why;
    };
    const Bad bad[] = {{{std::string("ab")}, "two characters"}, {{std::int64_t{1}}, "a number"}};
    for (const auto& b : bad) {
        EXPECT_EQ(elements_test::configError(*element, TextElementOptions{.mask = b.mask}),
                  ElementConfigError::invalidMask)
            << b.why;
    }
    element->setText("12345678");
    EXPECT_EQ(shown(*element), "12345") << "the earlier mask stayed after the refusals";

    element->setConfig(std::nullopt);
    EXPECT_EQ(element->getValueType(), ElementValueType::string);
    element->setText("abc 123 456");
    EXPECT_EQ(shown(*element), "abc 123 456") << "mask and validation are gone";
    EXPECT_TRUE(element->metadata().valid);
}

TEST_F(TextElementTest, TransformShapesTheValueAndValidationSeesTheValue) {
    auto element = std::make_shared<TextElementUITextField>();
    element->setConfig(TextElementOptions{.transform = ElementTransform{compileElementRegex("-"), std::nullopt},
                                          .validation = compileElementRegex("^[0-9]+$"),
                                          .getValueType = ElementValueType::int_});
    EventLog log(*element);
    element->setText("12-34");
    EXPECT_EQ(element->getValue(elements_test::valueKey()), "1234");
    EXPECT_TRUE(log.last().valid);
    EXPECT_EQ(element->getValueType(), ElementValueType::int_);
}

TEST_F(TextElementTest, SetValueFillsThroughTheSetter) {
    auto element = std::make_shared<TextElementUITextField>();
    element->setConfig(zipOptions());
    EventLog log(*element);
    element->setValue(nullptr);
    EXPECT_TRUE(log.events.empty());
    element->setValue(std::make_shared<ElementValueReference>(
        "id", [] { return std::string("10115x"); }, true, ElementValueType::string));
    EXPECT_EQ(shown(*element), "10115");
    EXPECT_EQ(log.types(), (std::vector<std::string>{"textChange"}));
    EXPECT_TRUE(log.last().complete);
}

TEST_F(TextElementTest, MirrorShowsTheSourceAndNeverTakesFocus) {
    auto source = std::make_shared<TextElementUITextField>();
    auto mirror = std::make_shared<TextElementUITextField>();
    mirror->setValueRef(source);
    EXPECT_TRUE(mirror->readOnly());
    EXPECT_FALSE(platform::TextFieldDriver(*mirror).tap());
    platform::TextFieldDriver(*source).type("ab");
    EXPECT_EQ(shown(*mirror), "ab");
    EXPECT_EQ(mirror->text(), std::nullopt);
}

TEST_F(TextElementTest, CopyIconCopiesTheRawTextAndResetsAfterOneSecond) {
    auto element = std::make_shared<TextElementUITextField>();
    const auto tint = platform::view::Color::rgb(0, 0, 1);
    auto options = zipOptions();
    options.enableCopy = true;
    options.copyIconColor = tint;
    element->setConfig(options);
    ASSERT_TRUE(element->rightView());
    EXPECT_EQ(element->rightViewMode(), platform::ViewMode::always);
    EXPECT_EQ(element->rightView()->accessibilityIdentifier(), "copy");
    EXPECT_EQ(element->rightView()->frame(), (platform::Rect{0, 0, 32, 24}));
    EXPECT_EQ(element->copyIconImageView()->frame(), (platform::Rect{4, 0, 24, 24}));
    EXPECT_EQ(element->copyIconImageView()->image()->name, "copy");
    EXPECT_EQ(element->copyIconImageView()->tintColor(), tint);

    platform::TextFieldDriver user(*element);
    user.type("94103");
    ASSERT_TRUE(user.tapRightView());
    EXPECT_EQ(platform::Pasteboard::general().string(), "94103");
    EXPECT_EQ(element->copyIconImageView()->image()->name, "check");
    main->advance(std::chrono::milliseconds(999));
    EXPECT_EQ(element->copyIconImageView()->image()->name, "check");
    main->advance(std::chrono::milliseconds(1));
    EXPECT_EQ(element->copyIconImageView()->image()->name, "copy");
    EXPECT_EQ(element->copyIconImageView()->tintColor(), tint);
}

TEST_F(TextElementTest, CopyIconResetIsHarmlessAfterTheFieldIsGone) {
    auto element = std::make_shared<TextElementUITextField>();
    element->setConfig(TextElementOptions{.enableCopy = true});
    auto icon = element->rightView();
    icon->tap();
    element.reset();
    platform::Pasteboard::general().setString("unchanged");
    icon->tap();
    EXPECT_EQ(platform::Pasteboard::general().string(), "unchanged") << "no field to copy from";
    main->advance(std::chrono::seconds(2));
}

TEST(ElementEventJson, KeysInOrderAndConversionFailure) {
    ElementEvent event{"textChange", true, false, true, true, {{"cardBrand", "visa"}}};
    EXPECT_EQ(event.encode().value(),
              R"({"type":"textChange","complete":true,"empty":false,"valid":true,"maskSatisfied":true,)"
              R"("details":[{"type":"cardBrand","message":"visa"}]})");
    EXPECT_EQ(anycodable::toJson(event.toDictionary().value()).value(), event.encode().value());
    ElementEvent broken{"\xFF", false, false, false, false, {}};
    EXPECT_EQ(broken.toDictionary().error(), ElementEvent::ConversionError::invalidJSON);
}

TEST(ElementResources, IconsAreInTheBundle) {
    for (const char* name : {"copy", "check"}) {
        auto image = elementImage(name);
        ASSERT_TRUE(image) << name;
        EXPECT_NE(image->svg.find("<svg"), std::string::npos);
    }
    EXPECT_FALSE(elementImage("missing"));
}

TEST(ElementResourcesDeathTest, NoBundleStops) {
    EXPECT_DEATH((void)internal::locateBundle({[]() -> const internal::ResourceBundle* { return nullptr; }}),
                 "unable to find bundle named KorvaneElements_KorvaneElements");
}

TEST(TextElementDeathTest, ReferenceWithoutValueMethodStops) {
    auto element = std::make_shared<TextElementUITextField>();
    auto reference = std::make_shared<ElementValueReference>("id", nullptr, true, ElementValueType::string);
    EXPECT_DEATH(element->setValue(reference), "ElementValueReference has no valueMethod");
}

}  // namespace
