#include "ToviUI/CurrencyTextFieldSwiftUIWrapper.hpp"

#include <climits>

#include "ToviUI/CurrencyAmountText.hpp"
#include "platform/MainQueue.hpp"
#include "platform/view/Builders.hpp"

namespace tovi {

using Coordinator = CurrencyTextFieldSwiftUIWrapper::Coordinator;

Coordinator::Coordinator(const CurrencyTextFieldSwiftUIWrapper& parent)
    : value_(parent.value),
      isResponder_(parent.isResponder),
      onDoneClick_(parent.onDoneClick),
      onReturn_(parent.onReturn),
      alwaysShowFractions_(parent.alwaysShowFractions),
      numberOfDecimalPlaces_(parent.numberOfDecimalPlaces),
      currencySymbol_(parent.currencySymbol),
      onEditingChanged_(parent.onEditingChanged) {}

void Coordinator::textFieldDidBeginEditing(platform::TextField& /*field*/) {
    // Later: the binding belongs to a parent whose view may be updating right now.
    platform::mainQueue().post([weak = weak_from_this()] {
        if (auto self = weak.lock(); self && self->isResponder_) self->isResponder_->set(true);
    });
}

void Coordinator::textFieldDidEndEditing(platform::TextField& field) {
    // "$12." becomes "$12.00" once the person is done.
    const std::optional<double> current = value_.get();
    field.setText(current ? amountTextFromValue(numberOfDecimalPlaces_, alwaysShowFractions_, currencySymbol_, *current)
                          : std::nullopt);
    platform::mainQueue().post([weak = weak_from_this()] {
        auto self = weak.lock();
        if (!self) return;
        if (self->isResponder_) self->isResponder_->set(false);
        if (self->onDoneClick_) self->onDoneClick_();
    });
}

bool Coordinator::textFieldShouldReturn(platform::TextField& field) {
    platform::NativeView* container = field.superview() != nullptr ? field.superview()->superview() : nullptr;
    platform::NativeView* next =
        container != nullptr && field.tag() < INT_MAX ? container->viewWithTag(field.tag() + 1) : nullptr;
    if (auto* nextField = dynamic_cast<platform::TextField*>(next)) {
        nextField->becomeFirstResponder();
    } else {
        field.resignFirstResponder();
    }
    if (onReturn_) onReturn_();
    return true;
}

void Coordinator::textFieldEditingDidBegin(platform::TextField& /*field*/) {
    if (onEditingChanged_) onEditingChanged_(true);
}

void Coordinator::textFieldEditingDidEnd(platform::TextField& /*field*/) {
    if (onEditingChanged_) onEditingChanged_(false);
}

std::shared_ptr<Coordinator> CurrencyTextFieldSwiftUIWrapper::makeCoordinator() const {
    return std::make_shared<Coordinator>(*this);
}

std::shared_ptr<platform::TextField> CurrencyTextFieldSwiftUIWrapper::makeUIView(Coordinator& coordinator) const {
    auto field = std::make_shared<platform::TextField>();
    field->setDelegate(coordinator.shared_from_this());
    field->addAction(platform::ControlEvent::editingDidBegin, [weak = coordinator.weak_from_this()](auto& f) {
        if (auto c = weak.lock()) c->textFieldEditingDidBegin(f);
    });
    field->addAction(platform::ControlEvent::editingDidEnd, [weak = coordinator.weak_from_this()](auto& f) {
        if (auto c = weak.lock()) c->textFieldEditingDidEnd(f);
    });
    if (const std::optional<double> current = value.get()) {
        field->setText(amountTextFromValue(numberOfDecimalPlaces, alwaysShowFractions, currencySymbol, *current));
    }
    field->setTag(tag);
    field->setTextColor(textColor.value_or(platform::view::Color::black()));
    field->setPlaceholder(placeholder);
    field->setTintColor(accentColor);
    field->setKeyboardType(keyboardType);
    field->setUserInteractionEnabled(isUserInteractionEnabled);
    coordinator.field_ = field;
    return field;
}

void CurrencyTextFieldSwiftUIWrapper::updateUIView(platform::TextField& field, Coordinator& coordinator) const {
    // Equal to what the field itself produced: the parent echoes the person's typing, and a
    // re-render would wipe an in-progress text such as "$12.".
    if (const std::optional<double> current = value.get(); current != coordinator.internalValue) {
        field.setText(current
                          ? amountTextFromValue(numberOfDecimalPlaces, alwaysShowFractions, currencySymbol, *current)
                          : std::nullopt);
        coordinator.internalValue = current;
    }
    if (isResponder && isResponder->get() && !field.isFirstResponder() && !coordinator.didBecomeFirstResponder) {
        field.becomeFirstResponder();
        coordinator.didBecomeFirstResponder = true;
    }
}

platform::view::Node CurrencyTextFieldSwiftUIWrapper::body(platform::view::Scope& scope) const {
    struct Hosted {
        std::shared_ptr<Coordinator> coordinator;
        std::shared_ptr<platform::TextField> field;
    };
    auto hosted = scope.stateObject<Hosted>("uiView", [this] {
        auto coordinator = makeCoordinator();
        auto field = makeUIView(*coordinator);
        return std::make_shared<Hosted>(Hosted{std::move(coordinator), std::move(field)});
    });
    updateUIView(*hosted->field, *hosted->coordinator);
    platform::view::Node node = platform::view::HostedTextField(hosted->field, placeholder);
    if (font) node.font(*font);
    return node.viewType(kTypeName);
}

}  // namespace tovi
