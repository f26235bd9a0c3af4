// The dollars field's answer to a key: it edits the text itself and always refuses the
// platform's own edit, so that what shows is the formatted amount with the caret kept at the
// same distance from the end.

#include <chrono>

#include "ToviUI/CurrencyAmountText.hpp"
#include "ToviUI/CurrencyTextFieldSwiftUIWrapper.hpp"
#include "TypedAmount.hpp"
#include "platform/MainQueue.hpp"
#include "platform/Text.hpp"

namespace tovi {

namespace {

// Nine whole digits keep every typed amount far inside what a double holds exactly and what
// converts to cents.
constexpr std::size_t kMaximumWholeDigits = 9;

std::ptrdiff_t lengthOf(const std::optional<std::string>& text) {
    return text ? static_cast<std::ptrdiff_t>(platform::utf16Length(*text)) : 0;
}

}  // namespace

using Coordinator = CurrencyTextFieldSwiftUIWrapper::Coordinator;

bool Coordinator::shouldChangeCharacters(platform::TextField& field, platform::TextRange range,
                                         std::string_view replacement) {
    const std::optional<std::string> priorText = field.text();
    std::optional<std::string> newText;
    std::optional<std::string> formatted;
    if (priorText) {
        std::u16string edited = platform::utf8ToUtf16(*priorText);
        range.location = std::min(range.location, edited.size());
        range.length = std::min(range.length, edited.size() - range.location);
        edited.replace(range.location, range.length, platform::utf8ToUtf16(replacement));
        newText = platform::utf16ToUtf8(edited);
        formatted = amountTextFromTyping(numberOfDecimalPlaces_, currencySymbol_, *newText);
    }

    const std::string separator = internal::deviceDecimalSeparator();
    const std::string_view typed = newText ? std::string_view(*newText) : std::string_view();
    if (internal::splitAt(typed, separator).size() > 2) return false;  // a second separator
    const std::string numeric = internal::numericText(typed, separator);
    const std::vector<std::string_view> parts = internal::splitAt(numeric, separator);
    if (parts[0].size() > kMaximumWholeDigits) return false;
    if (parts.size() == 2 && parts[1].size() > static_cast<std::size_t>(std::max(numberOfDecimalPlaces_, 0))) {
        return false;
    }

    // A lone separator is 0, not absent: the field holds a number being typed.
    std::optional<double> newValue;
    if (newText && !numeric.empty()) newValue = internal::typedNumber(numeric);
    value_.set(newValue);
    // Read back, so that a parent's binding that transforms what it stores has the last word.
    internalValue = value_.get();

    // Nothing visible would change (a letter typed): the text and the caret stay. Every other
    // case shows `formatted`, which is absent when nothing in the text counts.
    const bool unchanged = priorText ? priorText == formatted : !formatted;
    if (unchanged && !replacement.empty()) return false;
    field.setText(formatted);

    // The caret keeps its distance from the end, which grouping and symbols do not change.
    const bool deletionUnchanged = replacement.empty() && priorText == formatted;
    const auto location = static_cast<std::ptrdiff_t>(range.location);
    const std::ptrdiff_t offsetFromEnd =
        deletionUnchanged || (!priorText && !formatted)
            ? lengthOf(priorText) - location
            : lengthOf(priorText) - (location + static_cast<std::ptrdiff_t>(range.length));
    const std::optional<std::size_t> caret =
        field.position(field.beginningOfDocument(), lengthOf(formatted) - offsetFromEnd);
    if (caret) placeCaretLater(*caret);
    return false;
}

void Coordinator::placeCaretLater(std::size_t position) {
    // The platform moves the caret itself once the delegate has answered; this runs after it.
    platform::mainQueue().postAfter(std::chrono::milliseconds(0), [field = field_, position] {
        if (auto alive = field.lock()) alive->setSelectedTextRange(platform::TextRange{position, 0});
    });
}

}  // namespace tovi
