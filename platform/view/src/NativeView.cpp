#include "platform/view/NativeView.hpp"

#include <algorithm>

namespace platform {

NativeView::~NativeView() {
    for (auto& child : subviews_) {
        child->superview_ = nullptr;
    }
}

void NativeView::addSubview(std::shared_ptr<NativeView> view) {
    if (!view || view.get() == this || isDescendant(*view)) {
        return;
    }
    if (view->superview_ == this) {
        // Re-adding moves it to the front, as on the phone.
        auto it = std::find(subviews_.begin(), subviews_.end(), view);
        subviews_.erase(it);
        subviews_.push_back(std::move(view));
        return;
    }
    view->removeFromSuperview();
    view->superview_ = this;
    subviews_.push_back(std::move(view));
}

void NativeView::removeFromSuperview() {
    NativeView* parent = superview_;
    if (parent == nullptr) {
        return;
    }
    superview_ = nullptr;
    auto& siblings = parent->subviews_;
    // The erase may drop the last owner of this view, so nothing touches `this` afterwards.
    siblings.erase(std::remove_if(siblings.begin(), siblings.end(),
                                  [this](const std::shared_ptr<NativeView>& v) { return v.get() == this; }),
                   siblings.end());
}

NativeView* NativeView::viewWithTag(int tag) {
    if (tag_ == tag) {
        return this;
    }
    for (auto& child : subviews_) {
        if (NativeView* found = child->viewWithTag(tag)) {
            return found;
        }
    }
    return nullptr;
}

NativeView* NativeView::viewWithAccessibilityIdentifier(const std::string& identifier) {
    if (accessibilityIdentifier_ == identifier) {
        return this;
    }
    for (auto& child : subviews_) {
        if (NativeView* found = child->viewWithAccessibilityIdentifier(identifier)) {
            return found;
        }
    }
    return nullptr;
}

bool NativeView::isDescendant(const NativeView& ancestor) const {
    for (const NativeView* v = this; v != nullptr; v = v->superview_) {
        if (v == &ancestor) {
            return true;
        }
    }
    return false;
}

std::optional<view::Color> NativeView::tintColor() const {
    for (const NativeView* v = this; v != nullptr; v = v->superview_) {
        if (v->tintColor_) {
            return v->tintColor_;
        }
    }
    return std::nullopt;
}

void NativeView::addTapGestureRecognizer(std::function<void()> action) {
    tapActions_.push_back(std::make_shared<std::function<void()>>(std::move(action)));
}

bool NativeView::tap() {
    for (const NativeView* v = this; v != nullptr; v = v->superview_) {
        if (!v->userInteractionEnabled_ || v->hidden_) {
            return false;
        }
    }
    if (tapActions_.empty()) {
        return false;
    }
    // A copy, so that an action that adds recognisers does not disturb this walk.
    auto actions = tapActions_;
    for (auto& action : actions) {
        (*action)();
    }
    return true;
}

}  // namespace platform
