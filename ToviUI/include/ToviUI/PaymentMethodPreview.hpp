#pragma once
// PaymentMethodPreview: the "Reload Source" row of the add funds and auto reload sheets. It
// shows the chosen card (brand image and "···· 4242", red when expired) or "Add Payment" when
// there is none; a tap calls `onClick`, which opens the picker.

#include <functional>
#include <optional>

#include "ToviUI/PaymentMethodUiModel.hpp"
#include "platform/view/Node.hpp"

namespace tovi {

struct PaymentMethodPreview {
    std::optional<PaymentMethodUiModel> selectedPaymentMethod;
    std::function<void()> onClick = {};

    [[nodiscard]] platform::view::Node body() const;
    operator platform::view::Node() const { return body(); }  // NOLINT(google-explicit-constructor)
};

}  // namespace tovi
