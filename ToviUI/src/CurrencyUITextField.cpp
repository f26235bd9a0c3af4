#include "ToviUI/CurrencyUITextField.hpp"

#include "platform/MainQueue.hpp"
#include "platform/Text.hpp"

namespace tovi {

CurrencyUITextField::CurrencyUITextField(platform::view::Binding<std::int64_t> value, int fontSize,
                                         std::optional<std::string> hintText)
    : value_(std::move(value)), fontSize_(fontSize), hintText_(std::move(hintText)) {
    formatter_.setMaximumFractionDigits(2);
    setPlaceholder(hintText_);
    setTintColor(platform::view::Color::clear());  // no caret to see: it cannot be moved anyway
    render();
    // The phone does this when the field joins a superview; the hosted field has no such moment,
    // so it happens once here.
    addAction(platform::ControlEvent::editingChanged, [this](platform::TextField&) { editingChanged(); });
    addAction(static_cast<std::uint32_t>(platform::ControlEvent::touchDown) |
                  static_cast<std::uint32_t>(platform::ControlEvent::touchUpInside),
              [this](platform::TextField&) { resetSelection(); });
    setKeyboardType(platform::KeyboardType::numberPad);
    sendActions(platform::ControlEvent::editingChanged);
}

void CurrencyUITextField::updateValue(std::int64_t value) {
    value_.set(value);
    render();
}

void CurrencyUITextField::render() {
    const std::int64_t cents = value_.get();
    setText(cents < 1 ? std::string() : textForCents(cents));
}

std::string CurrencyUITextField::textForCents(std::int64_t cents) const {
    return formatter_.format(static_cast<double>(cents) / 100.0).value_or(std::string());
}

std::string CurrencyUITextField::digits() const {
    std::string kept;
    std::size_t count = 0;
    for (const std::string& character : platform::characters(storedText())) {
        if (count == kMaximumDigits) break;
        if (platform::wholeNumberValue(character)) {
            kept += character;
            ++count;
        }
    }
    return kept;
}

std::int64_t CurrencyUITextField::centsOfText() const {
    std::int64_t cents = 0;
    for (const std::string& character : platform::characters(digits())) {
        // A numeral worth more than one digit ("Ⅻ") makes the text no decimal number.
        const std::optional<std::int64_t> digit = platform::wholeNumberValue(character);
        if (!digit || *digit > 9) return 0;
        cents = cents * 10 + *digit;
    }
    return cents;
}

void CurrencyUITextField::resetSelection() {
    setSelectedTextRange(platform::TextRange{endOfDocument(), 0});
}

void CurrencyUITextField::deleteBackwardHook() {
    std::vector<std::string> kept = platform::characters(digits());
    if (!kept.empty()) kept.pop_back();
    std::string text;
    for (const std::string& digit : kept) text += digit;
    setText(std::move(text));
    sendActions(platform::ControlEvent::editingChanged);
}

void CurrencyUITextField::editingChanged() {
    const std::int64_t cents = centsOfText();
    setText(cents == 0 ? std::string() : textForCents(cents));
    resetSelection();
    // The binding's owner may be updating its view right now: store on a later turn.
    platform::mainQueue().post([this, alive = std::weak_ptr<int>(lifetime_)] {
        if (alive.lock()) value_.set(centsOfText());
    });
}

}  // namespace tovi
