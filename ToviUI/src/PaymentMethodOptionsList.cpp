#include "ToviUI/PaymentMethodOptionsList.hpp"

#include "ToviUI/PaymentMethodRowView.hpp"
#include "ToviUI/ToviDesignSystem.hpp"
#include "platform/view/Builders.hpp"
#include "platform/view/Scope.hpp"

namespace tovi {

using namespace platform::view;

Node PaymentMethodOptionsList::body() const {
    const auto& ds = ToviDesignSystem::shared();
    const std::optional<PaymentMethodUiModel> selected = selectedPaymentMethod.get();
    std::vector<Node> rows;
    rows.reserve(paymentMethods.size() * 2);
    for (const auto& method : paymentMethods) {
        rows.push_back(PaymentMethodRowView{.imageSource = imageSource(method.card.brand),
                                            .cardDetailsDisplayText = method.obfuscatedCardNumber(),
                                            .isExpired = method.isExpired,
                                            .isSelected = selected == method}
                           .body()
                           .contentShapeRectangle()
                           .onTapGesture([binding = selectedPaymentMethod, method] {
                               withAnimation(Animation::easeInOut(), [&] { binding.set(method); });
                           })
                           .accessibilityIdentifier("paymentMethod." + method.id)
                           .id(method.id));
        rows.push_back(Divider().fillWidth().background(ds.colors.background.medium));
    }
    return VStack(std::move(rows), Alignment::leading, 0).viewType("PaymentMethodOptionsList");
}

}  // namespace tovi
