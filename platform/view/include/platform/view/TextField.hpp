#pragma once
// TextField: a single-line text field that behaves like the phone's as far as the element and
// currency fields use it.
//
// The text is held as UTF-16, and every position, range and offset is in UTF-16 units, as on
// the phone: an emoji outside the basic plane is two units, "é" written as e + combining accent
// is two units. The public API takes and returns UTF-8.
//
// Keyboard input arrives through `insertText`, `deleteBackward` and `paste`. Each asks the
// delegate first (`shouldChangeCharacters` with the range being replaced and the new text), may
// be vetoed, then changes the text and selection and sends `editingChanged` to the registered
// actions. A programmatic `setText` sends nothing and moves the caret to the end. Focus goes
// through `becomeFirstResponder` / `resignFirstResponder`, which consult the delegate, inform it
// and send `editingDidBegin` / `editingDidEnd`. At most one field is first responder at a time:
// a field that takes focus makes the previous one resign first.
//
// Subclasses customise behaviour through the protected virtual hooks. The public entry points
// are not virtual, so a qualified call (`field.TextField::text()`) reaches the same hooks as an
// ordinary call: a subclass that hides its value from readers stays hidden.
//
// Thread safety: none; text fields live on the main queue.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/view/NativeView.hpp"

namespace platform::view::internal {
class Renderer;
}

namespace platform {

class TextField;

// A range of UTF-16 units.
struct TextRange {
    std::size_t location = 0;
    std::size_t length = 0;

    [[nodiscard]] std::size_t end() const { return location + length; }
    [[nodiscard]] bool empty() const { return length == 0; }
    friend bool operator==(const TextRange&, const TextRange&) = default;
};

// Control events, with the phone's bit values.
enum class ControlEvent : std::uint32_t {
    touchDown = 1u << 0,
    touchUpInside = 1u << 6,
    editingDidBegin = 1u << 16,
    editingChanged = 1u << 17,
    editingDidEnd = 1u << 18,
    editingDidEndOnExit = 1u << 19,
};

// The phone's keyboard types, raw values included.
enum class KeyboardType : int {
    defaultType = 0,
    asciiCapable = 1,
    numbersAndPunctuation = 2,
    url = 3,
    numberPad = 4,
    phonePad = 5,
    namePhonePad = 6,
    emailAddress = 7,
    decimalPad = 8,
    twitter = 9,
    webSearch = 10,
    asciiCapableNumberPad = 11,
};

enum class SmartDashesType : int { defaultType = 0, no = 1, yes = 2 };

// When an accessory view (the right view) shows.
enum class ViewMode : int { never = 0, whileEditing = 1, unlessEditing = 2, always = 3 };

// Every method has the phone's default answer, so a delegate overrides only what it needs.
// A field holds its delegate weakly.
class TextFieldDelegate {
public:
    virtual ~TextFieldDelegate() = default;
    virtual bool textFieldShouldBeginEditing(TextField&) { return true; }
    virtual void textFieldDidBeginEditing(TextField&) {}
    virtual bool textFieldShouldEndEditing(TextField&) { return true; }
    virtual void textFieldDidEndEditing(TextField&) {}
    // `range` is the UTF-16 range about to be replaced by `replacement` (empty for a deletion).
    virtual bool shouldChangeCharacters(TextField&, TextRange /*range*/, std::string_view /*replacement*/) {
        return true;
    }
    virtual bool textFieldShouldReturn(TextField&) { return true; }
};

class TextField : public NativeView {
public:
    using Action = std::function<void(TextField&)>;
    using ActionId = std::uint64_t;

    TextField() = default;
    explicit TextField(Rect frame) : NativeView(frame) {}
    ~TextField() override;

    // ---- Text ---------------------------------------------------------------------------
    // The field's own text is never absent: setting nothing stores the empty string. A subclass
    // may answer differently (see `readText`).
    [[nodiscard]] std::optional<std::string> text() const { return readText(); }
    void setText(std::optional<std::string> text) { writeText(std::move(text)); }

    [[nodiscard]] const std::optional<std::string>& placeholder() const { return placeholder_; }
    void setPlaceholder(std::optional<std::string> placeholder) { placeholder_ = std::move(placeholder); }

    // ---- Drawing ------------------------------------------------------------------------
    // What the field shows on screen, for the renderer that draws it, as the phone's own text
    // drawing sees every field's characters whatever `text()` answers. Only the view layer's
    // renderer can make the key, so host code cannot read a secure field through it.
    class DrawingKey {
        DrawingKey() = default;
        friend class view::internal::Renderer;
    };
    [[nodiscard]] std::string drawnText(DrawingKey /*key*/) const { return storedText(); }

    // ---- Keyboard input -----------------------------------------------------------------
    // A key press: replaces the selection with `text`. The delegate is asked first; the
    // `editingChanged` actions run once the whole insertion (a subclass's hook included) is
    // done, as on the phone, where the control event follows the insertion.
    void insertText(std::string_view text);
    // The delete key: removes the selection, or else the user-perceived character before the
    // caret. Nothing happens at the beginning of an empty selection. Events as for insertText.
    void deleteBackward();
    // The paste command: replaces the selection with the general pasteboard's string, as one
    // change. Nothing happens when the pasteboard holds no string.
    void paste();

    // ---- Selection (UTF-16 positions) ---------------------------------------------------
    [[nodiscard]] TextRange selectedTextRange() const { return selection_; }
    // Clamped to the text.
    void setSelectedTextRange(TextRange range);
    [[nodiscard]] std::size_t beginningOfDocument() const { return 0; }
    [[nodiscard]] std::size_t endOfDocument() const { return storage_.size(); }
    // Absent when the result would fall outside the document.
    [[nodiscard]] std::optional<std::size_t> position(std::size_t from, std::ptrdiff_t offset) const;
    [[nodiscard]] std::ptrdiff_t offset(std::size_t from, std::size_t to) const;
    [[nodiscard]] std::optional<TextRange> textRange(std::size_t from, std::size_t to) const;

    // ---- Focus --------------------------------------------------------------------------
    bool becomeFirstResponder();
    bool resignFirstResponder();
    [[nodiscard]] bool isFirstResponder() const;
    [[nodiscard]] bool isEditing() const { return isFirstResponder(); }
    // The field that has focus now, if any.
    [[nodiscard]] static TextField* currentFirstResponder();

    // ---- Control events ------------------------------------------------------------------
    // `events` is a bit mask of ControlEvent values.
    ActionId addAction(std::uint32_t events, Action action);
    ActionId addAction(ControlEvent event, Action action) {
        return addAction(static_cast<std::uint32_t>(event), std::move(action));
    }
    void removeAction(ActionId id);
    // Runs, in registration order, every action registered for `event`.
    void sendActions(ControlEvent event);

    // ---- Delegate -----------------------------------------------------------------------
    // A subclass may refuse a delegate (see `acceptsDelegate`); a refused one is ignored and the
    // previous delegate stays.
    void setDelegate(const std::shared_ptr<TextFieldDelegate>& delegate);
    [[nodiscard]] std::shared_ptr<TextFieldDelegate> delegate() const { return delegate_.lock(); }

    // ---- Appearance and traits ----------------------------------------------------------
    [[nodiscard]] KeyboardType keyboardType() const { return keyboardType_; }
    void setKeyboardType(KeyboardType type) { keyboardType_ = type; }
    [[nodiscard]] SmartDashesType smartDashesType() const { return smartDashesType_; }
    void setSmartDashesType(SmartDashesType type) { smartDashesType_ = type; }
    [[nodiscard]] std::optional<view::Color> textColor() const { return textColor_; }
    void setTextColor(std::optional<view::Color> color) { textColor_ = color; }
    [[nodiscard]] bool isEnabled() const { return enabled_; }
    void setEnabled(bool enabled) { enabled_ = enabled; }

    // The right view becomes a subview of the field; the previous one is removed.
    [[nodiscard]] const std::shared_ptr<NativeView>& rightView() const { return rightView_; }
    void setRightView(std::shared_ptr<NativeView> view);
    [[nodiscard]] ViewMode rightViewMode() const { return rightViewMode_; }
    void setRightViewMode(ViewMode mode) { rightViewMode_ = mode; }
    // Whether the right view shows now, given the mode and the editing state.
    [[nodiscard]] bool isRightViewVisible() const;

protected:
    // Overridable behaviour. The base versions are the phone's; a subclass calls them as its
    // "super" implementation.
    [[nodiscard]] virtual std::optional<std::string> readText() const;
    virtual void writeText(std::optional<std::string> text);
    virtual void insertTextHook(std::string_view text);
    virtual void deleteBackwardHook();
    // The paste command with the pasteboard's string.
    virtual void pasteHook(std::string_view text);
    [[nodiscard]] virtual bool canBecomeFirstResponder() const { return true; }
    // `delegate` is null when the caller clears it.
    [[nodiscard]] virtual bool acceptsDelegate(const TextFieldDelegate* /*delegate*/) const { return true; }

    // The stored text, whatever `readText` answers to others.
    [[nodiscard]] std::string storedText() const;
    [[nodiscard]] const std::u16string& storedUtf16() const { return storage_; }

private:
    // Asks the delegate and replaces `range`; the caller's entry point then sends
    // `editingChanged`. Answers false on a veto. Replacing an empty range with nothing is no
    // change at all.
    bool replaceAsUser(TextRange range, std::u16string_view replacement);
    // Runs `hook`, then the `editingChanged` actions if it changed the text.
    template <class Hook>
    void userEdit(Hook&& hook);

    struct Registration {
        ActionId id;
        std::uint32_t events;
        std::shared_ptr<Action> action;
    };

    std::u16string storage_;
    int userEditDepth_ = 0;
    bool changedByUser_ = false;
    TextRange selection_{};
    std::optional<std::string> placeholder_;
    std::weak_ptr<TextFieldDelegate> delegate_;
    std::vector<Registration> actions_;
    ActionId nextActionId_ = 1;
    KeyboardType keyboardType_ = KeyboardType::defaultType;
    SmartDashesType smartDashesType_ = SmartDashesType::defaultType;
    std::optional<view::Color> textColor_;
    bool enabled_ = true;
    std::shared_ptr<NativeView> rightView_;
    ViewMode rightViewMode_ = ViewMode::never;
};

}  // namespace platform
