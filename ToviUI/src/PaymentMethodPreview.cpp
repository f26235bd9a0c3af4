#include "ToviUI/PaymentMethodPreview.hpp"

#include "ToviUI/ToviActionView.hpp"
#include "ToviUI/ToviDesignSystem.hpp"
#include "ToviUI/ToviImage.hpp"
#include "ToviUI/ToviLocalization.hpp"
#include "platform/view/Builders.hpp"

namespace tovi {

using namespace platform::view;

Node PaymentMethodPreview::body() const {
    auto endSlot = [method = selectedPaymentMethod] {
        const auto& ds = ToviDesignSystem::shared();
        if (!method) {
            return Text(localized("Add Payment")).font(ds.fonts.body.medium).foregroundColor(ds.colors.text.link);
        }
        return HStack({ToviImage{imageSource(method->card.brand)}.body().frame(34, 24),
                       Text(method->obfuscatedCardNumber())
                           .font(ds.fonts.body.medium)
                           .foregroundColor(method->isExpired ? ds.colors.text.error : ds.colors.text.bold)},
                      Alignment::center, 16);
    };
    return ToviActionView{.label = localized("Reload Source"), .endSlot = endSlot, .onClick = onClick}
        .body()
        .fillWidth();
}

}  // namespace tovi
