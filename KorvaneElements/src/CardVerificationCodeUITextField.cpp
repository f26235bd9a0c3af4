#include "KorvaneElements/CardVerificationCodeUITextField.hpp"

#include "ElementText.hpp"
#include "platform/Fatal.hpp"
#include "platform/Regex.hpp"

namespace korvane::elements {

namespace {

bool codeTest(const std::optional<std::string>& text) {
    static const RegexRef code = compileElementRegex("^[0-9]{3,4}$");
    return text && code->search(std::string_view(*text));
}

}  // namespace

CardVerificationCodeUITextField::CardVerificationCodeUITextField() {
    setKeyboardType(platform::KeyboardType::asciiCapableNumberPad);
    logInfo("CardVerificationCodeUITextField init");
}

CardVerificationCodeUITextField::CardVerificationCodeUITextField(platform::Rect frame) : TextElementUITextField(frame) {
    setKeyboardType(platform::KeyboardType::asciiCapableNumberPad);
    logInfo("CardVerificationCodeUITextField init");
}

void CardVerificationCodeUITextField::setConfig(const std::optional<TextElementOptions>&) {
    throw ElementConfigException(ElementConfigError::configNotAllowed);
}

void CardVerificationCodeUITextField::setConfig(const CardVerificationCodeOptions& options) {
    if (options.cardNumberUITextField) {
        cardNumber_ = options.cardNumberUITextField;
        // The subscription ends with this element, and the number element is held by it.
        cardNumber_->subject()
            .sink([this](const ElementEvent& event) {
                if (event.type == "textChange") {
                    updateCvcMask();
                }
            })
            .store(cvcCancellables_);
    }
    if (options.enableCopy || options.copyIconColor) {
        try {
            TextElementUITextField::setConfig(TextElementOptions::copyOnly(options.enableCopy, options.copyIconColor));
        } catch (const ElementConfigException&) {
            platform::fatalStop("CardVerificationCodeUITextField: the base configuration failed without a mask");
        }
    }
}

std::optional<ElementMask> CardVerificationCodeUITextField::inputMask() const {
    return cvcMask_ ? cvcMask_ : CardBrand::cvcMask4();
}

TextElementUITextField::Validation CardVerificationCodeUITextField::validation() const {
    return codeTest;
}

bool CardVerificationCodeUITextField::maskTest(const std::optional<std::string>& text) const {
    if (!text) {
        return false;
    }
    const std::size_t count = internal::characterCount(*text);
    if (!cardNumber_) {
        return count == 3 || count == 4;
    }
    return count == (cvcMask_ ? cvcMask_->size() : 4);
}

void CardVerificationCodeUITextField::updateCvcMask() {
    if (!cardNumber_ || !cardNumber_->cardBrand() || !cardNumber_->cardBrand()->bestMatchCardBrand) {
        return;
    }
    const ElementMask& wanted = cardNumber_->cardBrand()->bestMatchCardBrand->cvcMaskInput;
    if (cvcMask_ && cvcMask_->size() == wanted.size()) {
        return;
    }
    cvcMask_ = wanted;
    const std::string value = applyTransform(fieldText());
    const bool valid = codeTest(value);
    const bool maskSatisfied = maskTest(value);
    publish(ElementEvent{"maskChange", valid && maskSatisfied, value.empty(), valid, maskSatisfied, {}});
}

TextElementUITextField::EventHook CardVerificationCodeUITextField::getElementEvent() {
    return [this](const std::optional<std::string>& value, const ElementEvent& base) {
        const bool valid = codeTest(value);
        const bool maskSatisfied = maskTest(value);
        const bool complete = valid && maskSatisfied;
        setIsComplete(complete);
        ElementEvent event{"textChange", complete, base.empty, base.valid, maskSatisfied, {}};
        logInfo("CardVerificationCodeUITextField textChange event", true, &event);
        return event;
    };
}

}  // namespace korvane::elements
