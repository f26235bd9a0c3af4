#include "ToviUI/AlertView.hpp"

#include "ToviUI/AlertArrowDownShape.hpp"
#include "ToviUI/AlertArrowUpShape.hpp"
#include "ToviUI/ToviDesignSystem.hpp"
#include "ToviUI/ToviImage.hpp"
#include "platform/view/Builders.hpp"

namespace tovi {

using namespace platform::view;

Node AlertView::body() const {
    const auto& c = ToviDesignSystem::shared().colors;
    const bool isAlert = uiModel.alertViewType == AlertViewType::alert;
    const bool up = uiModel.alertShape == AlertShape::upArrow;

    Node badge = ZStack({ColorView(isAlert ? c.background.alert : c.background.promoIcon),
                         ToviImage{isAlert ? ToviImageSource::alert : ToviImageSource::sparkle}
                             .body()
                             .frame(28, 28)
                             .foregroundColor(c.icons.promo)})
                     .frame(48, 48)
                     .clipShape(RoundedRectangle(24, CornerStyle::continuous));
    Node texts = VStack(
        {Text(uiModel.primaryText).font(Font::headline()).foregroundColor(c.text.primary),
         uiModel.secondaryText ? Text(*uiModel.secondaryText).font(Font::caption()).foregroundColor(c.text.secondary)
                               : Node{}},
        Alignment::leading, 2);
    Node bubble = (up ? AlertArrowUpShape{cornerRadius, arrowHeight}.shape()
                      : AlertArrowDownShape{cornerRadius, arrowHeight}.shape());
    bubble.fill(c.background.primary).stroke(isAlert ? c.background.alert : c.borders.branded, 1, 10);

    return HStack({badge, texts, Spacer()}, Alignment::center, 12)
        .padding(Edge::horizontal, 16)
        .padding(up ? Edge::top : Edge::bottom, 8)
        .frame(Frame{.height = 82})
        .background(bubble)
        .viewType("AlertView");
}

}  // namespace tovi
