#include "platform/view/TextField.hpp"

#include <algorithm>

#include "platform/Pasteboard.hpp"
#include "platform/Text.hpp"

namespace platform {

namespace {
// The one field with focus. Main queue only, like every field.
TextField* gFirstResponder = nullptr;
}  // namespace

TextField::~TextField() {
    if (gFirstResponder == this) {
        gFirstResponder = nullptr;
    }
}

std::optional<std::string> TextField::readText() const {
    return storedText();
}

void TextField::writeText(std::optional<std::string> text) {
    storage_ = text ? utf8ToUtf16(*text) : std::u16string();
    selection_ = TextRange{storage_.size(), 0};
}

std::string TextField::storedText() const {
    return utf16ToUtf8(storage_);
}

void TextField::insertTextHook(std::string_view text) {
    replaceAsUser(selection_, utf8ToUtf16(text));
}

void TextField::deleteBackwardHook() {
    TextRange range = selection_;
    if (range.empty()) {
        if (range.location == 0) {
            return;
        }
        // The last user-perceived character before the caret: an emoji with its modifiers or
        // a letter with its combining marks goes as one.
        const std::vector<std::string> before =
            characters(utf16ToUtf8(std::u16string_view(storage_).substr(0, range.location)));
        const std::size_t width = before.empty() ? range.location : utf16Length(before.back());
        range = TextRange{range.location - width, width};
    }
    replaceAsUser(range, u"");
}

template <class Hook>
void TextField::userEdit(Hook&& hook) {
    ++userEditDepth_;
    hook();
    if (--userEditDepth_ == 0 && changedByUser_) {
        changedByUser_ = false;
        sendActions(ControlEvent::editingChanged);
    }
}

void TextField::insertText(std::string_view text) {
    userEdit([&] { insertTextHook(text); });
}

void TextField::deleteBackward() {
    userEdit([&] { deleteBackwardHook(); });
}

void TextField::paste() {
    std::optional<std::string> clip = Pasteboard::general().string();
    if (!clip) {
        return;
    }
    userEdit([&] { pasteHook(*clip); });
}

void TextField::pasteHook(std::string_view text) {
    replaceAsUser(selection_, utf8ToUtf16(text));
}

bool TextField::replaceAsUser(TextRange range, std::u16string_view replacement) {
    range.location = std::min(range.location, storage_.size());
    range.length = std::min(range.length, storage_.size() - range.location);
    if (range.empty() && replacement.empty()) {
        return true;
    }
    if (auto d = delegate_.lock()) {
        if (!d->shouldChangeCharacters(*this, range, utf16ToUtf8(replacement))) {
            return false;
        }
    }
    storage_.replace(range.location, range.length, replacement);
    selection_ = TextRange{range.location + replacement.size(), 0};
    changedByUser_ = true;
    if (userEditDepth_ == 0) {
        // Reached outside an entry point (a subclass calling the base hook directly).
        changedByUser_ = false;
        sendActions(ControlEvent::editingChanged);
    }
    return true;
}

void TextField::setSelectedTextRange(TextRange range) {
    range.location = std::min(range.location, storage_.size());
    range.length = std::min(range.length, storage_.size() - range.location);
    selection_ = range;
}

std::optional<std::size_t> TextField::position(std::size_t from, std::ptrdiff_t offset) const {
    auto target = static_cast<std::ptrdiff_t>(from) + offset;
    if (from > storage_.size() || target < 0 || target > static_cast<std::ptrdiff_t>(storage_.size())) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(target);
}

std::ptrdiff_t TextField::offset(std::size_t from, std::size_t to) const {
    return static_cast<std::ptrdiff_t>(to) - static_cast<std::ptrdiff_t>(from);
}

std::optional<TextRange> TextField::textRange(std::size_t from, std::size_t to) const {
    if (from > storage_.size() || to > storage_.size()) {
        return std::nullopt;
    }
    auto [low, high] = std::minmax(from, to);
    return TextRange{low, high - low};
}

bool TextField::isFirstResponder() const {
    return gFirstResponder == this;
}

TextField* TextField::currentFirstResponder() {
    return gFirstResponder;
}

bool TextField::becomeFirstResponder() {
    if (isFirstResponder()) {
        return true;
    }
    if (!canBecomeFirstResponder() || !enabled_) {
        return false;
    }
    if (auto d = delegate_.lock(); d && !d->textFieldShouldBeginEditing(*this)) {
        return false;
    }
    if (gFirstResponder != nullptr && !gFirstResponder->resignFirstResponder()) {
        return false;
    }
    gFirstResponder = this;
    selection_ = TextRange{storage_.size(), 0};
    if (auto d = delegate_.lock()) {
        d->textFieldDidBeginEditing(*this);
    }
    sendActions(ControlEvent::editingDidBegin);
    return true;
}

bool TextField::resignFirstResponder() {
    if (!isFirstResponder()) {
        return true;
    }
    if (auto d = delegate_.lock(); d && !d->textFieldShouldEndEditing(*this)) {
        return false;
    }
    gFirstResponder = nullptr;
    if (auto d = delegate_.lock()) {
        d->textFieldDidEndEditing(*this);
    }
    sendActions(ControlEvent::editingDidEnd);
    return true;
}

TextField::ActionId TextField::addAction(std::uint32_t events, Action action) {
    ActionId id = nextActionId_++;
    actions_.push_back(Registration{id, events, std::make_shared<Action>(std::move(action))});
    return id;
}

void TextField::removeAction(ActionId id) {
    std::erase_if(actions_, [id](const Registration& r) { return r.id == id; });
}

void TextField::sendActions(ControlEvent event) {
    auto bit = static_cast<std::uint32_t>(event);
    // Collected first: an action may add or remove actions, or change the text again.
    std::vector<std::shared_ptr<Action>> due;
    for (const auto& r : actions_) {
        if ((r.events & bit) != 0) {
            due.push_back(r.action);
        }
    }
    for (auto& action : due) {
        (*action)(*this);
    }
}

void TextField::setDelegate(const std::shared_ptr<TextFieldDelegate>& delegate) {
    if (!acceptsDelegate(delegate.get())) {
        return;
    }
    delegate_ = delegate;
}

void TextField::setRightView(std::shared_ptr<NativeView> view) {
    if (rightView_ == view) {
        return;
    }
    if (rightView_) {
        rightView_->removeFromSuperview();
    }
    rightView_ = std::move(view);
    if (rightView_) {
        addSubview(rightView_);
    }
}

bool TextField::isRightViewVisible() const {
    if (!rightView_) {
        return false;
    }
    switch (rightViewMode_) {
        case ViewMode::never:
            return false;
        case ViewMode::whileEditing:
            return isEditing();
        case ViewMode::unlessEditing:
            return !isEditing();
        case ViewMode::always:
            return true;
    }
    return false;
}

}  // namespace platform
