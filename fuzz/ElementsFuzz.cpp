// Random key sequences into linked number, expiry and code fields: typing, pasting, deleting,
// moving the caret, focusing and leaving, with digits of other scripts, combining marks and
// emoji in the alphabet. Nothing may stop the process, digits other than 0-9 never survive a
// card mask, and no element ever shows its text.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "KorvaneElements/CardExpirationDateUITextField.hpp"
#include "KorvaneElements/CardVerificationCodeUITextField.hpp"
#include "KorvaneElements/Telemetry.hpp"
#include "platform/testing/DroppingTransport.hpp"
#include "platform/testing/ManualMainQueue.hpp"
#include "platform/view/TextFieldDriver.hpp"

namespace {

using namespace korvane::elements;

using platform::DroppingTransport;

constexpr std::string_view kAlphabet[] = {
    "0",         "1",       "2",
    "3",         "4",       "5",
    "6",         "7",       "8",
    "9",         " ",       "/",
    "-",         "a",       "\t",
    "٤",         "٢",  // Arabic-Indic digits
    "４",              // fullwidth digit
    "४",               // Devanagari digit
    "\xCC\x81",        // combining acute accent on its own
    "5\xCC\x81",       // a digit with a combining mark
    "😀",         "4️⃣", "👨‍👩‍👧",
    "½",         "Ⅻ",       "\r\n",
    "\xFF",
};
constexpr std::string_view kForeignDigits[] = {"٤", "٢", "４", "४"};

void check(bool condition, const char* what) {
    if (!condition) {
        std::fprintf(stderr, "invariant broken: %s\n", what);
        std::abort();
    }
}

void checkElement(TextElementUITextField& element) {
    check(!element.text().has_value(), "text is readable");
    const std::string value = element.getValue().value_or("");
    for (auto digit : kForeignDigits) {
        check(value.find(digit) == std::string::npos, "a digit of another script passed a card mask");
    }
    const auto& m = element.metadata();
    // The untouched flags (complete and empty, mask not satisfied) are the one exception.
    check(m == ElementMetadata{} || !m.complete || m.maskSatisfied, "complete without a satisfied mask");
}

struct Fields {
    std::shared_ptr<CardNumberUITextField> number = std::make_shared<CardNumberUITextField>();
    std::shared_ptr<CardExpirationDateUITextField> expiry = std::make_shared<CardExpirationDateUITextField>();
    std::shared_ptr<CardVerificationCodeUITextField> cvc = std::make_shared<CardVerificationCodeUITextField>();

    Fields() { cvc->setConfig(CardVerificationCodeOptions{.cardNumberUITextField = number, .enableCopy = true}); }
    ~Fields() {
        if (auto* f = platform::TextField::currentFirstResponder()) f->resignFirstResponder();
    }
    TextElementUITextField& pick(std::uint8_t b) {
        switch (b % 3) {
            case 0:
                return *number;
            case 1:
                return *expiry;
            default:
                return *cvc;
        }
    }
};

platform::ManualMainQueue& mainQueue() {
    static platform::ManualMainQueueScope* scope = [] {
        setTelemetrySession(std::make_shared<DroppingTransport>());
        return new platform::ManualMainQueueScope();
    }();
    return scope->queue();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    platform::ManualMainQueue& main = mainQueue();
    Fields fields;
    std::size_t i = 0;
    auto next = [&]() -> std::uint8_t { return i < size ? data[i++] : 0; };
    while (i < size) {
        const std::uint8_t op = next();
        TextElementUITextField& field = fields.pick(next());
        platform::TextFieldDriver user(field);
        switch (op % 9) {
            case 0:
            case 1:
            case 2:
                user.type(kAlphabet[next() % std::size(kAlphabet)]);
                break;
            case 3: {
                std::string pasted;
                for (int n = next() % 24; n > 0; --n) pasted += kAlphabet[next() % std::size(kAlphabet)];
                user.paste(pasted);
                break;
            }
            case 4:
                user.deleteBackward(next() % 4);
                break;
            case 5:
                user.tap();
                break;
            case 6:
                user.leave();
                break;
            case 7:
                user.select(platform::TextRange{next() % 24u, next() % 6u});
                break;
            default: {
                // Resolve the references the tokenize call would, and let the copy icon run.
                // (A text without a year after "/" is a documented stop for the year and the
                // formatted date, so they are only read when there is one.)
                const std::string value = fields.expiry->getValue().value_or("");
                (void)fields.expiry->month()->getValue();
                const std::size_t slash = value.find('/');
                if (slash != std::string::npos && value.find_first_not_of('/', slash) != std::string::npos) {
                    (void)fields.expiry->year()->getValue();
                    (void)fields.expiry->format("yyyy-MM-dd")->getValue();
                }
                user.tapRightView();
                main.advance(std::chrono::milliseconds(1000));
                break;
            }
        }
        checkElement(*fields.number);
        checkElement(*fields.expiry);
        checkElement(*fields.cvc);
        const auto& card = fields.number->cardMetadata();
        check(fields.number->metadata() == ElementMetadata{} ||
                  card.cardLast4.has_value() == fields.number->metadata().complete,
              "last four and completeness disagree");
    }
    return 0;
}
