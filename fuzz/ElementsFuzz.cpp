// Random key sequences into linked number, expiry and code fields: typing, pasting, deleting,
// moving the caret, focusing and leaving, with digits of other scripts, combining marks and
// emoji in the alphabet. Nothing may stop the process, digits other than 0-9 never survive a
// card mask, and no element ever shows its text.
//
// Each edit is also checked as a person sees it (the text copied through the copy icon, and
// the caret): the caret stays within the text; an edit that leaves the text as it was leaves
// the caret, the flags and the event stream alone; and otherwise the digits after the caret are
// the ones that were there (the end may be cut when a brand's mask gets shorter), and in the
// number and code fields the digits before it are the earlier ones plus what was typed.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "KorvaneElements/CardExpirationDateUITextField.hpp"
#include "KorvaneElements/CardVerificationCodeUITextField.hpp"
#include "KorvaneElements/Telemetry.hpp"
#include "ValueKeys.hpp"
#include "platform/Pasteboard.hpp"
#include "platform/Text.hpp"
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
    const std::string value = element.getValue(korvane::elements::internal::ValueKeys::make()).value_or("");
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
    std::size_t events = 0;  // published by any of them
    platform::CancellableSet subscriptions;

    Fields() {
        cvc->setConfig(CardVerificationCodeOptions{.cardNumberUITextField = number, .enableCopy = true});
        number->setConfig(TextElementOptions{.enableCopy = true});
        expiry->setConfig(TextElementOptions{.enableCopy = true});
        for (TextElementUITextField* field : {pick(0), pick(1), pick(2)}) {
            field->subject().sink([this](const ElementEvent&) { ++events; }).store(subscriptions);
        }
    }
    ~Fields() {
        if (auto* f = platform::TextField::currentFirstResponder()) f->resignFirstResponder();
    }
    TextElementUITextField* pick(std::uint8_t b) {
        switch (b % 3) {
            case 0:
                return number.get();
            case 1:
                return expiry.get();
            default:
                return cvc.get();
        }
    }
};

// A field as its user sees it.
struct Seen {
    std::string text;
    platform::TextRange selection;
    std::optional<bool> complete;
    ElementMetadata metadata;
    std::size_t events;

    // The digits of the text's UTF-16 units [from, to) (a masked card text is ASCII).
    [[nodiscard]] std::string digits(std::size_t from, std::size_t to = std::string::npos) const {
        std::string result;
        for (std::size_t i = from; i < std::min(to, text.size()); ++i) {
            if (text[i] >= '0' && text[i] <= '9') result += text[i];
        }
        return result;
    }
};

Seen look(TextElementUITextField& field, const Fields& fields) {
    platform::Pasteboard::general().setString("");
    platform::TextFieldDriver(field).tapRightView();
    return {platform::Pasteboard::general().string().value_or(""), field.selectedTextRange(), field.isComplete(),
            field.metadata(), fields.events};
}

// The digits a mask may take from `text`: characters that are one ASCII digit on their own.
std::string digitCharacters(std::string_view text) {
    std::string result;
    for (const std::string& c : platform::characters(text)) {
        if (c.size() == 1 && c[0] >= '0' && c[0] <= '9') result += c;
    }
    return result;
}

enum class Edit { type, paste, deleteKey };

// `typed` is what was typed or pasted. The expiry's own rewrites (a leading 0, a refused month)
// change the digits before the caret, so only the number and code fields `followKeys`.
void checkEdit(Edit edit, std::string_view typed, const Seen& was, const Seen& now, bool followKeys) {
    check(now.selection.end() <= now.text.size(), "the caret left the text");
    check(now.text.find_first_not_of("0123456789 /") == std::string::npos, "a field shows more than digits");
    if (now.text == was.text) {
        // A selection may be replaced by the same text; it collapses then, and that is all.
        if (was.selection.empty()) {
            check(now.selection == was.selection && now.complete == was.complete && now.metadata == was.metadata &&
                      now.events == was.events,
                  "an edit that changed no text changed the field");
        }
        return;
    }
    const std::string wasBefore = was.digits(0, was.selection.location);
    const std::string nowBefore = now.digits(0, now.selection.location);
    check(was.digits(was.selection.end()).starts_with(now.digits(now.selection.location)),
          "the digits after the caret changed");
    if (!followKeys) {
        return;
    }
    if (edit == Edit::deleteKey) {
        const std::size_t deleted = was.selection.empty() && !wasBefore.empty() ? 1 : 0;
        check(nowBefore == wasBefore.substr(0, wasBefore.size() - deleted), "delete took other digits");
    } else {
        check(nowBefore.starts_with(wasBefore) &&
                  digitCharacters(typed).starts_with(std::string_view(nowBefore).substr(wasBefore.size())),
              "the digits before the caret are not the earlier ones and the typed ones");
    }
}

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
    // Every input starts at the same instant, so that a failing one replays alike.
    main.discardPending();
    main.setNow(platform::ManualMainQueue::kDefaultStart);
    Fields fields;
    std::size_t i = 0;
    auto next = [&]() -> std::uint8_t { return i < size ? data[i++] : 0; };
    while (i < size) {
        const std::uint8_t op = next();
        TextElementUITextField& field = *fields.pick(next());
        platform::TextFieldDriver user(field);
        // An edit as a person sees it: the field has focus first, as the driver would give it.
        auto edit = [&](Edit kind, std::string_view typed, auto&& act) {
            if (!field.isFirstResponder()) user.tap();
            const Seen was = look(field, fields);
            act();
            checkEdit(kind, typed, was, look(field, fields), &field != fields.expiry.get());
        };
        switch (op % 10) {
            case 0:
            case 1:
            case 2: {
                const std::string_view key = kAlphabet[next() % std::size(kAlphabet)];
                edit(Edit::type, key, [&] { user.type(key); });
                break;
            }
            case 3: {
                std::string pasted;
                for (int n = next() % 24; n > 0; --n) pasted += kAlphabet[next() % std::size(kAlphabet)];
                edit(Edit::paste, pasted, [&] { user.paste(pasted); });
                break;
            }
            case 4:
                for (int n = next() % 4; n > 0; --n) edit(Edit::deleteKey, "", [&] { user.deleteBackward(); });
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
            case 9: {
                // The caret keys: to the start, to the end, or a few characters either way.
                const int how = next() % 8;
                const auto from = static_cast<std::ptrdiff_t>(field.selectedTextRange().location);
                const std::ptrdiff_t to = how == 0   ? 0
                                          : how == 1 ? static_cast<std::ptrdiff_t>(field.endOfDocument())
                                                     : from + how - 4;
                user.placeCaret(static_cast<std::size_t>(std::max<std::ptrdiff_t>(to, 0)));
                break;
            }
            default: {
                // Resolve the references the tokenize call would, and let the copy icon run.
                // (A text without a year after "/" is a documented stop for the year and the
                // formatted date, so they are only read when there is one.)
                const std::string value =
                    fields.expiry->getValue(korvane::elements::internal::ValueKeys::make()).value_or("");
                (void)fields.expiry->month()->getValue(korvane::elements::internal::ValueKeys::make());
                const std::size_t slash = value.find('/');
                if (slash != std::string::npos && value.find_first_not_of('/', slash) != std::string::npos) {
                    (void)fields.expiry->year()->getValue(korvane::elements::internal::ValueKeys::make());
                    (void)fields.expiry->format("yyyy-MM-dd")->getValue(korvane::elements::internal::ValueKeys::make());
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
