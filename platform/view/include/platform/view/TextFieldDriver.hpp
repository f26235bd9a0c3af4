#pragma once
// TextFieldDriver: acts on a text field the way a person does, so that tests and the demo host
// exercise exactly the paths the phone would: touches, focus with its delegate questions and
// control events, one `insertText` per key, the paste command and the delete key.
//
// Usage:
//   platform::TextFieldDriver user(*field);
//   user.type("4242 4242");      // taps the field first if it has no focus
//   user.deleteBackward(2);
//   user.paste("12/30");
//   user.leave();
//
// Thread safety: none; drive fields from the main queue.

#include <cstddef>
#include <string_view>

#include "platform/view/TextField.hpp"

namespace platform {

class TextFieldDriver {
public:
    explicit TextFieldDriver(TextField& field) : field_(field) {}

    // Touch down, focus, touch up inside. Answers whether the field has focus afterwards
    // (a read-only field or a vetoing delegate keeps it away).
    bool tap();

    // Types `text` one user-perceived character per key press. Taps first when the field has
    // no focus; types nothing when it cannot get focus.
    void type(std::string_view text);

    // Places `text` on the general pasteboard and sends the paste command.
    void paste(std::string_view text);

    // Presses the delete key `times` times.
    void deleteBackward(std::size_t times = 1);

    // Moves the caret (UTF-16 position) or selects a range, as a drag of the caret would.
    void placeCaret(std::size_t position) { field_.setSelectedTextRange(TextRange{position, 0}); }
    void select(TextRange range) { field_.setSelectedTextRange(range); }

    // Ends editing, as tapping elsewhere does. Answers whether the field let go of focus.
    bool leave();

    // Taps the field's right view (the copy icon, for instance). False when there is none or
    // it did not react.
    bool tapRightView();

private:
    bool ensureFocus();

    TextField& field_;
};

}  // namespace platform
