#include "KorvaneElements/CardNumberUITextField.hpp"

#include "ElementText.hpp"
#include "platform/Fatal.hpp"

namespace korvane::elements {

bool luhnValid(std::string_view text) {
    if (text.empty()) {
        return false;
    }
    const auto characters = internal::characters(text);
    int sum = 0;
    std::size_t i = 0;
    for (auto it = characters.rbegin(); it != characters.rend(); ++it, ++i) {
        auto digit = internal::parseInt64(*it);
        // A one-character integer reading: only the digits 0-9 get through.
        if (!digit || *digit < 0 || *digit > 9) {
            return false;
        }
        int d = static_cast<int>(*digit);
        if (i % 2 == 0) {
            sum += d;
        } else if (d == 9) {
            sum += 9;
        } else if (d < 5) {
            sum += 2 * d;
        } else {
            sum += 2 * d - 9;
        }
    }
    return sum % 10 == 0;
}

const ElementMask& CardNumberUITextField::defaultMask() {
    static const ElementMask mask = [] {
        const RegexRef& digit = CardBrand::digitMaskRegex();
        ElementMask m;
        for (int group = 0; group < 4; ++group) {
            if (group > 0) {
                m.emplace_back(std::string(" "));
            }
            m.insert(m.end(), 4, digit);
        }
        return m;
    }();
    return mask;
}

CardNumberUITextField::CardNumberUITextField() {
    setKeyboardType(platform::KeyboardType::asciiCapableNumberPad);
    logInfo("CardNumberUITextField init");
}

CardNumberUITextField::CardNumberUITextField(platform::Rect frame) : TextElementUITextField(frame) {
    setKeyboardType(platform::KeyboardType::asciiCapableNumberPad);
    logInfo("CardNumberUITextField init");
}

void CardNumberUITextField::setConfig(const std::optional<TextElementOptions>& options) {
    if (!options || (!options->enableCopy && !options->copyIconColor)) {
        throw ElementConfigException(ElementConfigError::configNotAllowed);
    }
    try {
        TextElementUITextField::setConfig(TextElementOptions::copyOnly(options->enableCopy, options->copyIconColor));
    } catch (const ElementConfigException&) {
        platform::fatalStop("CardNumberUITextField: the base configuration failed without a mask");
    }
}

void CardNumberUITextField::setCardTypes(std::optional<std::vector<CardBrandDetails>> cardTypes) {
    if (cardTypes) {
        CardBrand::addCardBrands(std::move(*cardTypes));
    }
}

std::optional<ElementMask> CardNumberUITextField::inputMask() const {
    return cardMask_ ? cardMask_ : defaultMask();
}

std::optional<ElementTransform> CardNumberUITextField::inputTransform() const {
    static const RegexRef blanks = compileElementRegex("[ \t]");
    return ElementTransform{blanks, std::nullopt};
}

TextElementUITextField::Validation CardNumberUITextField::validation() const {
    return [](const std::optional<std::string>& text) { return text && luhnValid(*text); };
}

TextElementUITextField::EventHook CardNumberUITextField::getElementEvent() {
    // The hook runs inside this element's own change handling, so `this` outlives it.
    return [this](const std::optional<std::string>& value, const ElementEvent& event) {
        return buildTextChangeEvent(value, event);
    };
}

void CardNumberUITextField::detect(std::string_view value) {
    cardBrand_ = CardBrand::getCardBrand(value);
    if (cardBrand_->bestMatchCardBrand) {
        cardMask_ = cardBrand_->bestMatchCardBrand->cardNumberMaskInput;
    }
}

std::optional<ElementMask> CardNumberUITextField::maskForText(std::string_view text) const {
    const std::string value = applyTransform(text);
    if (value.empty() || !internal::parseInt64(value)) {
        return std::nullopt;
    }
    CardBrandResults results = CardBrand::getCardBrand(value);
    if (!results.bestMatchCardBrand) {
        return std::nullopt;
    }
    return std::move(results.bestMatchCardBrand->cardNumberMaskInput);
}

void CardNumberUITextField::textFieldDidChange() {
    const std::string value = applyTransform(fieldText());
    // A 19-digit number above the integer maximum lands here too and clears the brand.
    if (value.empty() || !internal::parseInt64(value)) {
        cardBrand_.reset();
    } else {
        detect(value);
    }
    TextElementUITextField::textFieldDidChange();
}

ElementEvent CardNumberUITextField::buildTextChangeEvent(const std::optional<std::string>& value,
                                                         const ElementEvent& base) {
    if (value && !value->empty()) {
        detect(*value);
    } else {
        cardBrand_ = CardBrandResults{};
    }
    const bool maskSatisfied = cardBrand_ && cardBrand_->maskSatisfied;
    const bool complete = maskSatisfied && base.valid;
    setIsComplete(complete);

    const std::string brand =
        cardBrand_ && cardBrand_->bestMatchCardBrand ? cardBrand_->bestMatchCardBrand->cardBrandName : "unknown";
    std::vector<ElementEventDetails> details{{"cardBrand", brand}};
    cardMetadata_.cardBrand = brand;
    if (!complete) {
        cardMetadata_.cardLast4.reset();
        cardMetadata_.cardBin.reset();
    } else {
        const auto characters = internal::characters(*value);
        const std::size_t count = characters.size();
        const std::string last4(internal::joinPrefix(
            std::vector<std::string_view>(
                characters.end() - static_cast<std::ptrdiff_t>(std::min<std::size_t>(4, count)), characters.end()),
            4));
        // Together the bin and the last four leave at least four digits unpublished: a short
        // custom brand gets a shorter bin (none at eight digits or fewer).
        const std::size_t binLength = std::min<std::size_t>(count < 16 ? 6 : 8, count > 8 ? count - 8 : 0);
        const std::string bin(internal::joinPrefix(characters, binLength));
        details.push_back({"cardLast4", last4});
        details.push_back({"cardBin", bin});
        cardMetadata_.cardLast4 = last4;
        cardMetadata_.cardBin = bin;
    }
    ElementEvent event{"textChange", complete, base.empty, base.valid, maskSatisfied, std::move(details)};
    logInfo("CardNumberUITextField textChange event", true, &event);
    return event;
}

}  // namespace korvane::elements
