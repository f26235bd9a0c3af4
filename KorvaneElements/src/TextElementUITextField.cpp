#include "KorvaneElements/TextElementUITextField.hpp"
#include "ValueKeys.hpp"

#include <chrono>

#include "ElementText.hpp"
#include "KorvaneElements/ElementResources.hpp"
#include "KorvaneElements/ElementValueReference.hpp"
#include "KorvaneElements/KorvaneUIViewController.hpp"
#include "KorvaneElements/KvDatadogLogger.hpp"
#include "MaskEditing.hpp"
#include "platform/Fatal.hpp"
#include "platform/MainQueue.hpp"
#include "platform/Pasteboard.hpp"
#include "platform/Regex.hpp"
#include "platform/Text.hpp"
#include "platform/Uuid.hpp"

namespace korvane::elements {

TextElementUITextField::TextElementUITextField() : elementId_(platform::Uuid::random().string()) {
    setupElement();
}

TextElementUITextField::TextElementUITextField(platform::Rect frame)
    : TextField(frame), elementId_(platform::Uuid::random().string()) {
    setupElement();
}

TextElementUITextField::~TextElementUITextField() {
    *self_ = nullptr;
}

void TextElementUITextField::setupElement() {
    setSmartDashesType(platform::SmartDashesType::no);
    // The actions live as long as the field that owns them, so capturing `this` is safe.
    addAction(platform::ControlEvent::editingChanged, [this](platform::TextField&) { handleUserEdit(); });
    addAction(platform::ControlEvent::editingDidBegin, [this](platform::TextField&) { editingStarted(); });
    addAction(platform::ControlEvent::editingDidEnd, [this](platform::TextField&) { editingEnded(); });
    subject_.send(
        ElementEvent{"ready", metadata_.complete, metadata_.empty, metadata_.valid, metadata_.maskSatisfied, {}});
    logInfo("TextElementUITextField init");
}

void TextElementUITextField::logInfo(std::string_view message, bool withEvent, const ElementEvent* event) const {
    anycodable::Map attributes{{"elementId", elementId_}};
    if (withEvent) {
        anycodable::Value eventValue;  // written as null when the event cannot be converted
        if (event != nullptr) {
            if (auto dictionary = event->toDictionary()) {
                eventValue = std::move(*dictionary);
            }
        }
        attributes.set("event", std::move(eventValue));
    }
    logger().log(message, "info", std::nullopt, attributes);
}

TextElementUITextField::Validation TextElementUITextField::validation() const {
    if (!inputValidation_) {
        return {};
    }
    return [regex = inputValidation_](const std::optional<std::string>& text) {
        return text && regex->firstMatch(platform::utf8ToUtf16(*text)).has_value();
    };
}

std::string TextElementUITextField::applyTransform(std::optional<std::string_view> text) const {
    return applyElementTransform(inputTransform(), text);
}

std::string TextElementUITextField::applyMaskInForce(std::optional<std::string_view> text) const {
    auto mask = inputMask();
    return mask ? applyMask(*mask, text) : std::string(text.value_or(""));
}

void TextElementUITextField::setConfig(const std::optional<TextElementOptions>& options) {
    if (options && options->mask) {
        if (!isValidMask(*options->mask)) {
            throw ElementConfigException(ElementConfigError::invalidMask);
        }
        setInputMask(*options->mask);
    } else {
        setInputMask(std::nullopt);
    }
    setInputTransform(options ? options->transform : std::nullopt);
    inputValidation_ = options ? options->validation : nullptr;
    copyIconColor_ = options ? options->copyIconColor : std::nullopt;
    if (options && options->enableCopy.value_or(false)) {
        setupCopyIcon();
    }
    getValueType_ = (options && options->getValueType) ? *options->getValueType : ElementValueType::string;
}

void TextElementUITextField::setValue(const std::shared_ptr<ElementValueReference>& reference) {
    if (!reference) {
        return;
    }
    if (!reference->hasValueMethod()) {
        platform::fatalStop("ElementValueReference has no valueMethod");
    }
    writeText(reference->valueMethod(internal::ValueKeys::make())());
}

void TextElementUITextField::setValueRef(const std::shared_ptr<TextElementUITextField>& element) {
    readOnly_ = true;
    valueRef_ = element;
    if (!element) {
        return;
    }
    // The source is held by `valueRef_`, and the subscription ends with this element.
    TextElementUITextField* source = element.get();
    element->subject()
        .sink([this, source](const ElementEvent& event) {
            if (event.type == "textChange") {
                writeText(source->storedText());
            }
        })
        .store(cancellables_);
}

std::optional<std::string> TextElementUITextField::getValue(ValueKey /*key*/) const {
    return applyTransform(storedText());
}

void TextElementUITextField::updateCompletenessFromSetter(std::optional<std::string_view> unmaskedValue) {
    if (auto check = validation()) {
        if (!isComplete_ || *isComplete_) {
            isComplete_ = check(applyTransform(unmaskedValue));
        }
    }
}

void TextElementUITextField::writeText(std::optional<std::string> text) {
    if (auto mask = inputMask()) {
        writeMasked(*mask, text.value_or(""));
    } else {
        TextField::writeText(text);
    }
    updateCompletenessFromSetter(text);
    textFieldDidChange();
}

void TextElementUITextField::writeMasked(const ElementMask& mask, std::string_view text) {
    if (handlingUserEdit_ && !caretAnchor_) {
        // The text as the user's edit left it, before any formatting.
        const std::string edited = storedText();
        const std::size_t caret = platform::utf8Offset(edited, selectedTextRange().location).value_or(edited.size());
        caretAnchor_ = std::make_unique<internal::CaretAnchor>(internal::anchorCaret(mask, edited, caret));
    }
    std::string masked = applyMask(mask, text);
    if (!caretAnchor_) {
        TextField::writeText(std::move(masked));
        return;
    }
    const std::size_t caret = internal::followCaret(*caretAnchor_, mask, masked);
    const std::size_t position = platform::utf16Length(std::string_view(masked).substr(0, caret));
    TextField::writeText(std::move(masked));
    setSelectedTextRange(platform::TextRange{position, 0});
}

void TextElementUITextField::handleUserEdit() {
    struct Handling {
        TextElementUITextField& field;
        explicit Handling(TextElementUITextField& f) : field(f) { field.handlingUserEdit_ = true; }
        ~Handling() {
            field.handlingUserEdit_ = false;
            field.caretAnchor_.reset();
        }
    } handling(*this);
    textFieldDidChange();
}

std::string TextElementUITextField::admitted(const ElementMask& mask, std::string_view text) const {
    const std::string current = storedText();
    const platform::TextRange selection = selectedTextRange();
    const std::size_t from = platform::utf8Offset(current, selection.location).value_or(current.size());
    const std::size_t to = platform::utf8Offset(current, selection.end()).value_or(current.size());
    std::string taken = internal::admittedInsertion(mask, current, from, to, text);
    // What the element then makes of the text may take more room (the expiry's leading 0) or
    // leave less (a brand with shorter numbers): the last characters go until nothing is cut
    // off. A mask with more room is not taken up, as a paste is cut to the mask in force.
    const std::string_view whole = current;
    while (!taken.empty()) {
        const std::string edited =
            rewrittenText(std::string(whole.substr(0, from)).append(taken).append(whole.substr(to)));
        if (internal::fitsMask(maskForText(edited).value_or(mask), edited)) {
            break;
        }
        taken.resize(taken.size() - internal::characters(taken).back().size());
    }
    return taken;
}

void TextElementUITextField::insertTextHook(std::string_view text) {
    if (auto mask = inputMask()) {
        const std::string taken = admitted(*mask, text);
        if (taken.empty()) {
            return;  // refused: no change, so no change handling and no event either
        }
        TextField::insertTextHook(taken);
    } else {
        TextField::insertTextHook(text);
    }
    // The editing-changed event follows once this returns; it runs the change handling.
    updateCompletenessFromSetter(text);
}

void TextElementUITextField::pasteHook(std::string_view text) {
    if (auto mask = inputMask()) {
        const std::string taken = admitted(*mask, text);
        if (!taken.empty()) {
            TextField::pasteHook(taken);
        }
    } else {
        TextField::pasteHook(text);
    }
}

void TextElementUITextField::deleteBackwardHook() {
    backspacePressed_ = true;
    const platform::TextRange selection = selectedTextRange();
    if (auto mask = inputMask(); mask && selection.empty()) {
        const std::string current = storedText();
        const std::size_t caret = platform::utf8Offset(current, selection.location).value_or(current.size());
        if (auto bytes = internal::deletionBeforeSeparator(*mask, current, caret)) {
            if (bytes->first == bytes->second) {
                return;  // nothing but separators before the caret
            }
            const std::string_view whole = current;
            setSelectedTextRange(
                platform::TextRange{platform::utf16Length(whole.substr(0, bytes->first)),
                                    platform::utf16Length(whole.substr(bytes->first, bytes->second - bytes->first))});
        }
    }
    TextField::deleteBackwardHook();
}

bool TextElementUITextField::acceptsDelegate(const platform::TextFieldDelegate* delegate) const {
    return dynamic_cast<const KorvaneUIViewController*>(delegate) != nullptr;
}

void TextElementUITextField::textFieldDidChange() {
    const std::optional<ElementMask> mask = inputMask();
    bool maskSatisfied = true;
    if (mask) {
        // The stored text is never absent here (the field stores "" for nothing), so the
        // "backspace on an absent text" case cannot arise and the text is always re-masked.
        writeMasked(*mask, storedText());
        maskSatisfied = internal::characterCount(storedText()) == mask->size();
    }
    const std::string value = applyTransform(storedText());
    bool valid = true;
    bool complete = maskSatisfied;
    if (auto check = validation()) {
        valid = check(value);
        complete = valid && maskSatisfied;
    }
    isComplete_ = complete;
    ElementEvent event{"textChange", complete, value.empty(), valid, maskSatisfied, {}};
    if (auto hook = getElementEvent()) {
        event = hook(value, std::move(event));
    }
    metadata_ = ElementMetadata{event.complete, event.empty, event.valid, event.maskSatisfied};
    std::string current = storedText();
    if (current == previousValue_) {
        return;
    }
    previousValue_ = std::move(current);
    logInfo("TextElementUITextField textChange event", true, &event);
    subject_.send(event);
}

void TextElementUITextField::editingStarted() {
    subject_.send(
        ElementEvent{"focus", metadata_.complete, metadata_.empty, metadata_.valid, metadata_.maskSatisfied, {}});
}

void TextElementUITextField::editingEnded() {
    subject_.send(
        ElementEvent{"blur", metadata_.complete, metadata_.empty, metadata_.valid, metadata_.maskSatisfied, {}});
}

void TextElementUITextField::setupCopyIcon() {
    auto container = std::make_shared<platform::NativeView>(platform::Rect{0, 0, 32, 24});
    container->setContentMode(platform::ContentMode::scaleAspectFit);
    container->setUserInteractionEnabled(true);
    // A host may keep the right view past the field; the handle goes null with the field.
    container->addTapGestureRecognizer([self = self_] {
        if (*self != nullptr) {
            (*self)->copyText();
        }
    });
    container->setAccessibilityIdentifier("copy");
    copyIconImageView_->setFrame(platform::Rect{4, 0, 24, 24});
    copyIconImageView_->setImage(elementImage("copy"));
    if (copyIconColor_) {
        copyIconImageView_->setTintColor(copyIconColor_);
    }
    container->addSubview(copyIconImageView_);
    setRightViewMode(platform::ViewMode::always);
    setRightView(std::move(container));
}

void TextElementUITextField::copyText() {
    platform::Pasteboard::general().setString(storedText());
    copyIconImageView_->setImage(elementImage("check"));
    if (copyIconColor_) {
        copyIconImageView_->setTintColor(copyIconColor_);
    }
    // The image view, not the field, is captured: the reset is harmless if the field is gone.
    platform::mainQueue().postAfter(std::chrono::milliseconds(1000),
                                    [imageView = copyIconImageView_] { imageView->setImage(elementImage("copy")); });
}

}  // namespace korvane::elements
