#pragma once
// SelectPaymentMethodOptionBottomSheet: the card picker that the add funds and auto reload
// sheets push: a header "Select Payment Method", the saved cards and an "Add New Card" row.
//
// While it is shown it listens to `updates`: a card added meanwhile (by the add card flow)
// becomes the selection at once, before the list is reloaded. It starts listening when it
// appears and stops when it leaves the screen, so a closed picker never changes a selection.
// Host it through a Scope, which keeps the subscription:
//
//     s.view(SelectPaymentMethodOptionBottomSheet{methods, selection, back, addCard})
//
// Thread safety: main thread only, like the update manager.

#include <functional>
#include <optional>
#include <vector>

#include "ToviUI/PaymentMethodUiModel.hpp"
#include "ToviUI/PaymentMethodUpdateManager.hpp"
#include "platform/view/Node.hpp"
#include "platform/view/Scope.hpp"
#include "platform/view/State.hpp"

namespace tovi {

struct SelectPaymentMethodOptionBottomSheet {
    static constexpr const char* kTypeName = "SelectPaymentMethodOptionBottomSheet";

    std::vector<PaymentMethodUiModel> paymentMethods;
    platform::view::Binding<std::optional<PaymentMethodUiModel>> selectedPaymentMethod;
    std::function<void()> onBackClicked = {};
    std::function<void()> addPaymentSourceClick = {};
    // REQUIRES: outlives the shown sheet.
    PaymentMethodUpdateManager* updates = &PaymentMethodUpdateManager::shared();

    [[nodiscard]] platform::view::Node body(platform::view::Scope& s) const;
    // The sheet's content without the subscription, for previews.
    [[nodiscard]] platform::view::Node content() const;
};

}  // namespace tovi
