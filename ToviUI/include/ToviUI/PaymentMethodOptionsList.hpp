#pragma once
// PaymentMethodOptionsList: the saved cards as picker rows, in the order given, each followed
// by a full-width divider. A tap on a row makes its card the selection (expired cards too:
// the sheets disable their actions instead), animated ease-in-out; tapping the selected row
// keeps it. Rows are keyed by the card's id ("paymentMethod.<id>" for tools).

#include <optional>
#include <vector>

#include "ToviUI/PaymentMethodUiModel.hpp"
#include "platform/view/Node.hpp"
#include "platform/view/State.hpp"

namespace tovi {

struct PaymentMethodOptionsList {
    std::vector<PaymentMethodUiModel> paymentMethods;
    platform::view::Binding<std::optional<PaymentMethodUiModel>> selectedPaymentMethod;

    [[nodiscard]] platform::view::Node body() const;
    operator platform::view::Node() const { return body(); }  // NOLINT(google-explicit-constructor)
};

}  // namespace tovi
