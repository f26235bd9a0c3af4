#pragma once
// TextElementUITextField: a text field that holds sensitive input for a host that must never
// read it.
//
// The host places the field on screen, configures it (`setConfig`) and subscribes to
// `subject()`; it cannot read what was typed: `text()` always answers absent, the delegate can
// only be the library's own `KorvaneUIViewController`, and events and `metadata()` carry flags
// only. The value leaves the element only through `getValue(ValueKey)` of the reference protocol,
// which only the library's tokenize, proxy and reveal calls can call, at the last moment before
// a request.
//
// Each change of the text runs the mask, the transform and the validation, updates the flags
// and publishes a "textChange" event (a change that leaves the text as it was publishes
// nothing). Focus and blur publish "focus" and "blur". Construction publishes "ready".
//
// Create elements with std::make_shared: mirroring and linking hold them shared.
//
// Usage:
//   auto zip = std::make_shared<TextElementUITextField>();
//   zip->setConfig(TextElementOptions{.mask = ElementMask(5, CardBrand::digitMaskRegex())});
//   auto sub = zip->subject().publisher().sink([](const ElementEvent& e) { ... });
//
// Thread safety: none; main queue only. Events are delivered synchronously on the thread that
// changed the text. The copy icon's reset is posted to `platform::mainQueue()`.

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "KorvaneElements/ElementConfigError.hpp"
#include "KorvaneElements/ElementEvent.hpp"
#include "KorvaneElements/ElementMask.hpp"
#include "KorvaneElements/ElementMetadata.hpp"
#include "KorvaneElements/ElementProtocol.hpp"
#include "KorvaneElements/ElementReferenceProtocol.hpp"
#include "KorvaneElements/ElementTransform.hpp"
#include "KorvaneElements/TextElementOptions.hpp"
#include "platform/Cancellable.hpp"
#include "platform/PassthroughSubject.hpp"
#include "platform/view/NativeView.hpp"
#include "platform/view/TextField.hpp"

namespace korvane::elements {

class ElementValueReference;
namespace internal {
struct CaretAnchor;
}

class TextElementUITextField : public platform::TextField, public ElementProtocol, public ElementReferenceProtocol {
public:
    // An absent text reads as nil; answers whether a value is valid.
    using Validation = std::function<bool(const std::optional<std::string>&)>;
    // Rewrites the text change event; receives the transformed value and the computed event.
    using EventHook = std::function<ElementEvent(const std::optional<std::string>&, ElementEvent)>;

    TextElementUITextField();
    explicit TextElementUITextField(platform::Rect frame);
    ~TextElementUITextField() override;

    // ---- Host configuration --------------------------------------------------------------
    // Throws ElementConfigException(invalidMask) for a malformed mask, leaving everything as it
    // was. Absent options (or absent fields) clear mask, transform, validation and icon colour;
    // the value type becomes `string`. `enableCopy` true adds the copy icon; false leaves an
    // icon that is there.
    virtual void setConfig(const std::optional<TextElementOptions>& options);

    // ---- ElementProtocol -----------------------------------------------------------------
    [[nodiscard]] platform::PassthroughSubject<ElementEvent>& subject() override { return subject_; }
    [[nodiscard]] const ElementMetadata& metadata() const override { return metadata_; }
    // Fills the field from a reference, running mask, validation and events. Null does nothing.
    // REQUIRES: the reference has a value method; otherwise the process stops.
    void setValue(const std::shared_ptr<ElementValueReference>& elementValueReference) override;
    // Makes this element a read-only mirror of `element`: it never takes focus again and shows
    // the mirrored text after each of its text changes.
    void setValueRef(const std::shared_ptr<TextElementUITextField>& element) override;
    [[nodiscard]] const std::string& elementId() const override { return elementId_; }
    void setElementId(std::string id) override { elementId_ = std::move(id); }

    // ---- ElementReferenceProtocol ----------------------------------------------------------
    // The transformed field text; empty when there is none.
    [[nodiscard]] std::optional<std::string> getValue(ValueKey key) const override;
    [[nodiscard]] std::optional<ElementValueType> getValueType() const override { return getValueType_; }
    void setGetValueType(std::optional<ElementValueType> type) override { getValueType_ = type; }
    [[nodiscard]] std::optional<bool> isComplete() const override { return isComplete_; }
    void setIsComplete(std::optional<bool> complete) override { isComplete_ = complete; }

    // ---- State a host may look at --------------------------------------------------------
    [[nodiscard]] bool readOnly() const { return readOnly_; }
    [[nodiscard]] bool backspacePressed() const { return backspacePressed_; }
    [[nodiscard]] const std::shared_ptr<TextElementUITextField>& valueRef() const { return valueRef_; }
    [[nodiscard]] const std::optional<platform::view::Color>& copyIconColor() const { return copyIconColor_; }
    [[nodiscard]] const std::shared_ptr<platform::NativeImageView>& copyIconImageView() const {
        return copyIconImageView_;
    }

protected:
    // ---- Overridable behaviour -----------------------------------------------------------
    [[nodiscard]] virtual std::optional<ElementMask> inputMask() const { return inputMask_; }
    virtual void setInputMask(std::optional<ElementMask> mask) { inputMask_ = std::move(mask); }
    [[nodiscard]] virtual std::optional<ElementTransform> inputTransform() const { return inputTransform_; }
    virtual void setInputTransform(std::optional<ElementTransform> transform) {
        inputTransform_ = std::move(transform);
    }
    [[nodiscard]] const RegexRef& inputValidation() const { return inputValidation_; }
    // Empty when there is no validation.
    [[nodiscard]] virtual Validation validation() const;
    // Empty when the event is not rewritten.
    [[nodiscard]] virtual EventHook getElementEvent() { return {}; }
    // What the change handling will make of `text` before masking it (the expiry's leading 0).
    [[nodiscard]] virtual std::string rewrittenText(std::string text) const { return text; }
    // The mask the element will apply to `text`, when that is not the mask in force (the
    // number's follows the brand the text shows); absent otherwise.
    [[nodiscard]] virtual std::optional<ElementMask> maskForText(std::string_view /*text*/) const {
        return std::nullopt;
    }
    // Runs after every change of the field text (the editing-changed control event).
    virtual void textFieldDidChange();

    [[nodiscard]] std::string applyTransform(std::optional<std::string_view> text) const;
    [[nodiscard]] std::string applyMaskInForce(std::optional<std::string_view> text) const;
    void setupCopyIcon();
    // The copy icon's action: puts the raw field text (literals included) on the general
    // pasteboard and shows the "check" image for one second.
    void copyText();

    // The field text as the element sees it, for subclasses.
    [[nodiscard]] std::string fieldText() const { return storedText(); }
    // Writes through the element's own setter (mask, validation, change handling).
    void assignText(std::optional<std::string> text) { writeText(std::move(text)); }
    // Points at this element until it is destroyed: what a callback that may outlive the
    // element (a value reference, a delayed task) captures.
    [[nodiscard]] const std::shared_ptr<TextElementUITextField*>& selfHandle() const { return self_; }
    // Publishes `event` without the text change bookkeeping.
    void publish(const ElementEvent& event) { subject_.send(event); }
    void logInfo(std::string_view message, bool withEvent = false, const ElementEvent* event = nullptr) const;

    // ---- platform::TextField hooks -------------------------------------------------------
    [[nodiscard]] std::optional<std::string> readText() const override { return std::nullopt; }
    void writeText(std::optional<std::string> text) override;
    // With a mask, a key or paste adds only the characters the mask takes, and only as many as
    // it has free positions for; one that adds nothing leaves the element exactly as it was.
    void insertTextHook(std::string_view text) override;
    void pasteHook(std::string_view text) override;
    // After a separator the mask wrote, deletes the typed character before it.
    void deleteBackwardHook() override;
    [[nodiscard]] bool canBecomeFirstResponder() const override { return !readOnly_; }
    [[nodiscard]] bool acceptsDelegate(const platform::TextFieldDelegate* delegate) const override;

private:
    void setupElement();
    void editingStarted();
    void editingEnded();
    // The validation's part of the setter and of insertion.
    void updateCompletenessFromSetter(std::optional<std::string_view> unmaskedValue);
    // The characters of `text` the mask lets into the selection (see insertTextHook).
    [[nodiscard]] std::string admitted(const ElementMask& mask, std::string_view text) const;
    // Writes `text` masked. While a user's edit is handled the caret stays after the typed
    // character it followed before the formatting; otherwise it goes to the end.
    void writeMasked(const ElementMask& mask, std::string_view text);
    // Runs the change handling of a user's edit (the editing-changed control event).
    void handleUserEdit();

    std::string elementId_;
    std::optional<bool> isComplete_;
    bool backspacePressed_ = false;
    std::optional<ElementMask> inputMask_;
    std::optional<ElementTransform> inputTransform_;
    RegexRef inputValidation_;
    std::string previousValue_;
    bool readOnly_ = false;
    std::shared_ptr<TextElementUITextField> valueRef_;
    std::optional<platform::view::Color> copyIconColor_;
    std::optional<ElementValueType> getValueType_;
    platform::CancellableSet cancellables_;
    std::shared_ptr<platform::NativeImageView> copyIconImageView_ = std::make_shared<platform::NativeImageView>();
    platform::PassthroughSubject<ElementEvent> subject_;
    ElementMetadata metadata_;
    bool handlingUserEdit_ = false;
    // Set at the first masked write of a user's edit; kept until its handling ends.
    std::unique_ptr<internal::CaretAnchor> caretAnchor_;
    // Points at this element until it is destroyed; shared with callbacks that may outlive it.
    std::shared_ptr<TextElementUITextField*> self_ = std::make_shared<TextElementUITextField*>(this);
};

}  // namespace korvane::elements
