#include "ToviUI/CurrencyTextField.hpp"

#include "platform/Console.hpp"
#include "platform/view/Builders.hpp"

namespace tovi {

CurrencyTextField::CurrencyTextField(platform::view::Binding<std::int64_t> value,
                                     platform::view::Binding<std::int64_t> forceOverrideValue, int fontSize,
                                     std::optional<std::string> hintText)
    : currencyField_(std::make_shared<CurrencyUITextField>(value, fontSize, std::move(hintText))),
      currentValueBinding_(std::move(value)),
      forceOverrideValue_(std::move(forceOverrideValue)) {}

void CurrencyTextField::updateUIView(CurrencyUITextField& field) const {
    const std::int64_t forced = forceOverrideValue_.get();
    if (currentValueBinding_.get() == forced) return;
    platform::consoleLine("The parent of this SwiftUI view is forcing a value update");
    field.updateValue(forced);
}

platform::view::Node CurrencyTextField::body(platform::view::Scope& scope) const {
    auto field = scope.stateObject<CurrencyUITextField>("uiView", [this] { return makeUIView(); });
    updateUIView(*field);
    return platform::view::HostedTextField(field, field->hintText().value_or(std::string()))
        .font(platform::view::Font::system(field->fontSize()))
        .viewType(kTypeName);
}

}  // namespace tovi
