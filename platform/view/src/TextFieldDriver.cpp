#include "platform/view/TextFieldDriver.hpp"

#include "platform/Pasteboard.hpp"
#include "platform/Text.hpp"

namespace platform {

bool TextFieldDriver::tap() {
    field_.sendActions(ControlEvent::touchDown);
    bool focused = field_.becomeFirstResponder();
    field_.sendActions(ControlEvent::touchUpInside);
    return focused;
}

bool TextFieldDriver::ensureFocus() {
    return field_.isFirstResponder() || tap();
}

void TextFieldDriver::type(std::string_view text) {
    if (!ensureFocus()) {
        return;
    }
    for (const std::string& key : characters(text)) {
        field_.insertText(key);
    }
}

void TextFieldDriver::paste(std::string_view text) {
    if (!ensureFocus()) {
        return;
    }
    Pasteboard::general().setString(std::string(text));
    field_.paste();
}

void TextFieldDriver::deleteBackward(std::size_t times) {
    if (!ensureFocus()) {
        return;
    }
    for (std::size_t i = 0; i < times; ++i) {
        field_.deleteBackward();
    }
}

bool TextFieldDriver::leave() {
    return field_.resignFirstResponder();
}

bool TextFieldDriver::tapRightView() {
    const auto& view = field_.rightView();
    return view && field_.isRightViewVisible() && view->tap();
}

}  // namespace platform
