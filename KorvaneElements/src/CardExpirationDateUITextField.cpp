#include "KorvaneElements/CardExpirationDateUITextField.hpp"
#include "ValueKeys.hpp"

#include <chrono>
#include <map>
#include <mutex>

#include "ElementText.hpp"
#include "KorvaneElements/CardBrand.hpp"
#include "KorvaneElements/ElementValueReference.hpp"
#include "platform/Calendar.hpp"
#include "platform/Clock.hpp"
#include "platform/DateFormatter.hpp"
#include "platform/Fatal.hpp"
#include "platform/Locale.hpp"
#include "platform/Text.hpp"

namespace korvane::elements {

namespace {

// The parts of "MM/YY" around "/", skipping empty ones as the phone's split does.
std::vector<std::string_view> splitAtSlash(std::string_view text) {
    std::vector<std::string_view> parts;
    std::size_t start = 0;
    while (start <= text.size()) {
        std::size_t slash = text.find('/', start);
        std::size_t end = slash == std::string_view::npos ? text.size() : slash;
        if (end > start) {
            parts.push_back(text.substr(start, end - start));
        }
        if (slash == std::string_view::npos) {
            break;
        }
        start = slash + 1;
    }
    return parts;
}

// "Now" read with a pattern in the current locale and time zone. Formatters are costly to
// make, so one per pattern is kept and remade when the locale or zone changes.
std::optional<std::int64_t> currentField(const char* pattern) {
    struct Cached {
        std::string locale;
        std::string zone;
        std::optional<platform::DateFormatter> formatter;
    };
    static std::mutex mutex;
    static std::map<std::string, Cached> cache;
    std::lock_guard lock(mutex);
    Cached& entry = cache[pattern];
    std::string locale = platform::currentLocale();
    std::string zone = platform::currentTimeZone();
    if (!entry.formatter || entry.locale != locale || entry.zone != zone) {
        auto made = platform::DateFormatter::make(pattern);
        if (!made) {
            return std::nullopt;
        }
        entry = Cached{std::move(locale), std::move(zone), std::move(*made)};
    }
    return internal::parseInt64(entry.formatter->format(platform::clock().now()));
}

std::string lastCharacters(std::string_view text, std::size_t n) {
    const auto characters = internal::characters(text);
    if (characters.size() <= n) {
        return std::string(text);
    }
    const std::size_t skip = characters.size() - n;
    return std::string(text.substr(static_cast<std::size_t>(characters[skip].data() - text.data())));
}

std::string resolve(const std::shared_ptr<ElementValueReference>& reference) {
    if (!reference) {
        return "";
    }
    if (!reference->hasValueMethod()) {
        platform::fatalStop("ElementValueReference has no valueMethod");
    }
    return reference->valueMethod(internal::ValueKeys::make())();
}

// What the month rules make of a typed value: a first digit above 1 cannot begin a two-digit
// month, so it gets a leading 0 ("5" is "05"); a second digit above 2 after a 1 is no month, so
// the text goes back to "1" ("13" and "1345" are "1"). Absent when neither applies. A character
// that counts as a number without a whole value ("½") is no month digit; it is left to the
// mask.
std::optional<std::string> monthRewrite(const std::string& value) {
    if (value.empty()) {
        return std::nullopt;
    }
    const auto characters = internal::characters(value);
    const std::string first(characters.front());
    if (!platform::isNumber(first)) {
        return std::nullopt;
    }
    const std::optional<std::int64_t> firstValue = platform::wholeNumberValue(first);
    if (firstValue && *firstValue > 1) {
        return "0" + value;
    }
    if (firstValue == 1 && characters.size() > 1) {
        const std::string second(characters[1]);
        const auto secondValue = platform::wholeNumberValue(second);
        if (platform::isNumber(second) && secondValue && *secondValue > 2) {
            return "1";
        }
    }
    return std::nullopt;
}

}  // namespace

const ElementMask& CardExpirationDateUITextField::expiryMask() {
    static const ElementMask mask = [] {
        const RegexRef& digit = CardBrand::digitMaskRegex();
        return ElementMask{digit, digit, std::string("/"), digit, digit};
    }();
    return mask;
}

CardExpirationDateUITextField::CardExpirationDateUITextField() {
    setKeyboardType(platform::KeyboardType::asciiCapableNumberPad);
    logInfo("CardExpirationDateUITextField init");
}

CardExpirationDateUITextField::CardExpirationDateUITextField(platform::Rect frame) : TextElementUITextField(frame) {
    setKeyboardType(platform::KeyboardType::asciiCapableNumberPad);
    logInfo("CardExpirationDateUITextField init");
}

void CardExpirationDateUITextField::setConfig(const std::optional<TextElementOptions>& options) {
    if (!options || (!options->enableCopy && !options->copyIconColor)) {
        throw ElementConfigException(ElementConfigError::configNotAllowed);
    }
    TextElementUITextField::setConfig(TextElementOptions::copyOnly(options->enableCopy, options->copyIconColor));
}

std::string CardExpirationDateUITextField::rewrittenText(std::string text) const {
    auto rewritten = monthRewrite(applyTransform(text));
    return rewritten ? std::move(*rewritten) : text;
}

void CardExpirationDateUITextField::textFieldDidChange() {
    if (auto rewritten = monthRewrite(applyTransform(fieldText()))) {
        assignText(std::move(*rewritten));  // mask, validation and a nested change handling run
    }
    TextElementUITextField::textFieldDidChange();
}

TextElementUITextField::Validation CardExpirationDateUITextField::validation() const {
    return [handle = selfHandle()](const std::optional<std::string>& text) {
        if (!text || internal::characterCount(*text) != 5 || *handle == nullptr) {
            return false;
        }
        return static_cast<const CardExpirationDateUITextField*>(*handle)->dateIsCurrent();
    };
}

bool CardExpirationDateUITextField::dateIsCurrent() const {
    // The field's own text is read, not the text being validated.
    const std::string value = applyTransform(fieldText());
    const auto parts = splitAtSlash(value);
    if (parts.size() < 2) {
        return false;
    }
    // A part that is no integer (a pasted digit of another script) makes the date invalid.
    const auto month = internal::parseInt64(parts[0]);
    const auto year = internal::parseInt64("20" + std::string(parts[1]));
    const auto currentYear = currentField("YYYY");
    if (!month || !year || !currentYear) {
        return false;
    }
    if (*year > *currentYear) {
        return true;
    }
    if (*year < *currentYear) {
        return false;
    }
    const auto currentMonth = currentField("MM");
    return currentMonth && *month >= *currentMonth;
}

std::string CardExpirationDateUITextField::monthText() const {
    // The parts are views: the text they point into must outlive them.
    const std::string value = applyTransform(fieldText());
    const auto parts = splitAtSlash(value);
    return parts.empty() ? std::string() : std::string(parts[0]);
}

std::string CardExpirationDateUITextField::yearText() const {
    const std::string value = applyTransform(fieldText());
    const auto parts = splitAtSlash(value);
    // Half-typed ("1", "12"): there is no year yet, which the reference reads as no value.
    if (parts.size() < 2) return std::string();
    return "20" + std::string(parts[1]);
}

// A reference taken before the field was ever edited reads as incomplete, so that the request
// fails as invalid input rather than stopping on an unknown completeness.
std::shared_ptr<ElementValueReference> CardExpirationDateUITextField::month() const {
    return std::make_shared<ElementValueReference>(
        elementId(),
        [handle = selfHandle()] {
            return *handle ? static_cast<const CardExpirationDateUITextField*>(*handle)->monthText() : std::string();
        },
        isComplete().value_or(false), ElementValueType::int_);
}

std::shared_ptr<ElementValueReference> CardExpirationDateUITextField::year() const {
    return std::make_shared<ElementValueReference>(
        elementId(),
        [handle = selfHandle()] {
            return *handle ? static_cast<const CardExpirationDateUITextField*>(*handle)->yearText() : std::string();
        },
        isComplete().value_or(false), ElementValueType::int_);
}

std::shared_ptr<ElementValueReference> CardExpirationDateUITextField::format(std::string_view dateFormat) const {
    auto reference = std::make_shared<ElementValueReference>(elementId(), nullptr, isComplete().value_or(false),
                                                             ElementValueType::string);
    const auto yearValue = internal::parseInt64(yearText());
    const auto monthValue = internal::parseInt64(monthText());
    if (!yearValue || !monthValue) {
        return reference;
    }
    const platform::Calendar calendar = platform::Calendar::current();
    const auto firstOfMonth = calendar.date(platform::DateComponents{
        .year = static_cast<int>(*yearValue), .month = static_cast<int>(*monthValue), .day = 1});
    if (!firstOfMonth) {
        // A one-digit year ("04/6", a year 206) lies outside the instants the platform's clock
        // can hold. It is typed input, so it gives no date rather than a stop.
        return reference;
    }
    const auto endOfDay = calendar.settingTime(*firstOfMonth + std::chrono::seconds(86399), 23, 59, 59);
    if (!endOfDay) {
        return reference;
    }
    auto formatter = platform::DateFormatter::make(dateFormat);
    if (!formatter) {
        return reference;
    }
    reference->setValueMethod([text = formatter->format(*endOfDay)] { return text; });
    return reference;
}

void CardExpirationDateUITextField::setValue(const std::shared_ptr<ElementValueReference>& month,
                                             const std::shared_ptr<ElementValueReference>& year) {
    const std::string monthPart = lastCharacters("00" + resolve(month), 2);
    const std::string yearPart = lastCharacters(resolve(year), 2);
    assignText(monthPart + "/" + yearPart);
}

}  // namespace korvane::elements
