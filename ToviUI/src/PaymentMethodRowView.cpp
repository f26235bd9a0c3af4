#include "ToviUI/PaymentMethodRowView.hpp"

#include "ToviUI/ToviDesignSystem.hpp"
#include "ToviUI/ToviImage.hpp"
#include "ToviUI/ToviLocalization.hpp"
#include "platform/view/Builders.hpp"

namespace tovi {

using namespace platform::view;

Node PaymentMethodRowView::body() const {
    const auto& ds = ToviDesignSystem::shared();
    Node expired =
        isExpired ? Text(localized("Expired")).font(ds.fonts.footnote).foregroundColor(ds.colors.text.error) : Node{};
    Node check = isSelected ? ToviImage{ToviImageSource::check, RenderingMode::templated}
                                  .body()
                                  .frame(24, 24)
                                  .foregroundColor(ds.colors.icons.primary)
                                  .accessibilityIdentifier("paymentMethod.selected")
                            : Node{};
    // The card text may be long or right to left: one line, so the row keeps its height, in a
    // column that takes the free width and keeps the check mark at the end.
    return HStack({ToviImage{imageSource}.body().frame(46, 32),
                   VStack({Text(cardDetailsDisplayText)
                               .font(ds.fonts.body.semibold)
                               .foregroundColor(ds.colors.text.primary)
                               .lineLimit(1),
                           expired},
                          Alignment::leading)
                       .fillWidth(Alignment::leading),
                   check},
                  Alignment::center)
        .frame(Frame{.height = 50})
        .viewType("PaymentMethodRowView");
}

}  // namespace tovi
