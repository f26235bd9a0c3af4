// What the host and the wire can learn from the card elements: flags, brand, bin and last four,
// never a value. Also input in other scripts, which must neither pass nor stop anything.

#include <gtest/gtest.h>

#include <functional>
#include <type_traits>

#include "AnyCodable/JsonReader.hpp"
#include "ElementTestSupport.hpp"
#include "KorvaneElements/CardExpirationDateUITextField.hpp"
#include "KorvaneElements/CardVerificationCodeUITextField.hpp"
#include "KorvaneElements/ElementValueReference.hpp"
#include "platform/view/TextFieldDriver.hpp"

namespace {

using namespace korvane::elements;

// A host holds elements and references but cannot read them: a key to their values cannot be
// made outside the library, and no accessor answers without one.
template <class T>
concept ReadableWithoutKey = requires(const T& held) {
    held.getValue();
};
template <class T>
concept MethodReadableWithoutKey = requires(const T& held) {
    held.valueMethod();
};
static_assert(!std::is_default_constructible_v<ValueKey>);
static_assert(!ReadableWithoutKey<ElementReferenceProtocol> && !ReadableWithoutKey<TextElementUITextField> &&
              !ReadableWithoutKey<CardNumberUITextField> && !ReadableWithoutKey<ElementValueReference>);
static_assert(!MethodReadableWithoutKey<ElementValueReference>);

struct LinkedCard {
    std::shared_ptr<CardNumberUITextField> number = std::make_shared<CardNumberUITextField>();
    std::shared_ptr<CardExpirationDateUITextField> expiry = std::make_shared<CardExpirationDateUITextField>();
    std::shared_ptr<CardVerificationCodeUITextField> cvc = std::make_shared<CardVerificationCodeUITextField>();
    LinkedCard() { cvc->setConfig(CardVerificationCodeOptions{.cardNumberUITextField = number, .enableCopy = true}); }
    ~LinkedCard() {
        if (auto* f = platform::TextField::currentFirstResponder()) f->resignFirstResponder();
    }
};

// Calls `visit(path, text)` for every string in `json`; the path names object keys and, for
// event details, the detail's type.
void forEachString(const anycodable::Value& json, const std::string& path,
                   const std::function<void(const std::string&, const std::string&)>& visit) {
    if (const auto* text = json.get<std::string>()) {
        visit(path, *text);
    } else if (const auto* object = json.get<anycodable::Map>()) {
        const auto* type = object->find("type");
        const auto* message = object->find("message");
        if (type && message && object->size() == 2) {
            visit(path + "/detail:" + *type->get<std::string>(), *message->get<std::string>());
            return;
        }
        for (const auto& [key, value] : *object) forEachString(value, path + "/" + key, visit);
    } else if (const auto* array = json.get<anycodable::Array>()) {
        for (const auto& value : *array) forEachString(value, path, visit);
    }
}

TEST(ElementSecurity, TypedValuesReachNoPostedBody) {
    elements_test::TelemetryCapture telemetry;
    LinkedCard card;
    std::vector<ElementEvent> events;
    auto s1 = card.number->subject().sink([&](const ElementEvent& e) { events.push_back(e); });
    auto s2 = card.expiry->subject().sink([&](const ElementEvent& e) { events.push_back(e); });
    auto s3 = card.cvc->subject().sink([&](const ElementEvent& e) { events.push_back(e); });

    platform::TextFieldDriver(*card.number).type("4000 0566 5566 5556");
    platform::TextFieldDriver(*card.expiry).type("1239");
    platform::TextFieldDriver(*card.cvc).type("737");
    platform::TextFieldDriver(*card.cvc).leave();
    ASSERT_TRUE(card.number->metadata().complete);
    ASSERT_TRUE(card.expiry->metadata().complete);
    ASSERT_TRUE(card.cvc->metadata().complete);

    // Fragments of the values that may appear only where allowed.
    const std::vector<std::string> secrets{"4000056655665556", "4000 0566", "5556", "40000566", "12/39", "1239", "737"};
    const auto bodies = telemetry.bodies();
    ASSERT_GT(bodies.size(), 20u);
    for (const auto& body : bodies) {
        EXPECT_EQ(body.find("4000056655665556"), std::string::npos);
        EXPECT_EQ(body.find("4000 0566 5566 5556"), std::string::npos);
        forEachString(anycodable::readJson(body).value(), "", [&](const std::string& path, const std::string& text) {
            if (path.ends_with("/elementId")) return;  // a random UUID: may contain anything
            const bool binOrLast4 = path.ends_with("detail:cardBin") || path.ends_with("detail:cardLast4");
            for (const auto& secret : secrets) {
                if (text.find(secret) == std::string::npos) continue;
                const bool allowed = binOrLast4 && (text == "5556" || text == "40000566");
                EXPECT_TRUE(allowed) << "\"" << secret << "\" in " << path << " = " << text;
            }
        });
    }

    // The host's own view: no text, flags and card facts only.
    for (TextElementUITextField* e : {static_cast<TextElementUITextField*>(card.number.get()),
                                      static_cast<TextElementUITextField*>(card.expiry.get()),
                                      static_cast<TextElementUITextField*>(card.cvc.get())}) {
        EXPECT_EQ(e->text(), std::nullopt);
    }
    EXPECT_EQ(card.number->cardMetadata(), (CardMetadata{"5556", "40000566", "visa"}));
    for (const auto& e : events) {
        const std::string json = e.encode().value();
        EXPECT_EQ(json.find("4000056655665556"), std::string::npos);
        EXPECT_EQ(json.find("737"), std::string::npos);
        EXPECT_EQ(json.find("12/39"), std::string::npos);
    }
}

// Digits of other scripts: dropped by the masks like letters, and never a stop.
TEST(ElementNonAsciiDigits, PastedIntoEachCardField) {
    elements_test::TelemetryCapture telemetry;
    struct Case {
        const char* pasted;
        const char* numberValue;
        const char* why;
    };
    const Case cases[] = {
        {"٤٢٤٢ ٤٢٤٢ ٤٢٤٢ ٤٢٤٢", "", "Arabic-Indic digits"},
        {"４２４２４２４２４２４２４２４２", "", "fullwidth digits"},
        {"४२४२", "", "Devanagari digits"},
        {"4٢4٢ 42", "4442", "mixed scripts keep only the ASCII digits"},
    };
    for (const auto& c : cases) {
        LinkedCard card;
        elements_test::EventLog log(*card.number);
        platform::TextFieldDriver(*card.number).paste(c.pasted);
        EXPECT_EQ(card.number->getValue(elements_test::valueKey()), c.numberValue) << c.why;
        if (std::string(c.numberValue).empty()) {
            EXPECT_EQ(log.types(), (std::vector<std::string>{"focus"})) << c.why << ": nothing changed";
        } else {
            EXPECT_EQ(log.types(), (std::vector<std::string>{"focus", "textChange"})) << c.why;
            EXPECT_EQ(card.number->cardMetadata().cardBrand, "visa") << c.why;
        }
        platform::TextFieldDriver(*card.expiry).paste("١٢/٣٠");
        EXPECT_EQ(card.expiry->getValue(elements_test::valueKey()), "") << c.why;
        platform::TextFieldDriver(*card.cvc).paste("١٢٣");
        EXPECT_EQ(card.cvc->getValue(elements_test::valueKey()), "") << c.why;
        card.number->setText(c.pasted);
        EXPECT_EQ(card.number->getValue(elements_test::valueKey()), c.numberValue) << c.why << " (through the setter)";
    }
}

}  // namespace
