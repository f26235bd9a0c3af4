#pragma once
// CurrencyTextField: hosts a `CurrencyUITextField` in a screen, bound to cents.
//
//     CurrencyTextField(cents.binding(), cents.binding(), 17, "Amount")
//
// `forceOverrideValue` is the parent's way of overriding what the field holds: whenever a build
// finds it different from `value`, the field takes it (and says so on standard output). A
// parent that never overrides passes the same binding twice.
//
// Thread safety: main queue only.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "ToviUI/CurrencyUITextField.hpp"
#include "platform/view/Node.hpp"
#include "platform/view/Scope.hpp"
#include "platform/view/State.hpp"

namespace tovi {

class CurrencyTextField {
public:
    static constexpr const char* kTypeName = "CurrencyTextField";

    CurrencyTextField(platform::view::Binding<std::int64_t> value,
                      platform::view::Binding<std::int64_t> forceOverrideValue, int fontSize,
                      std::optional<std::string> hintText);

    [[nodiscard]] std::shared_ptr<CurrencyUITextField> makeUIView() const { return currencyField_; }
    void updateUIView(CurrencyUITextField& field) const;

    // The field made for the first build of this identity, updated at every build.
    [[nodiscard]] platform::view::Node body(platform::view::Scope& scope) const;

private:
    std::shared_ptr<CurrencyUITextField> currencyField_;
    platform::view::Binding<std::int64_t> currentValueBinding_;
    platform::view::Binding<std::int64_t> forceOverrideValue_;
};

}  // namespace tovi
