#include "ToviUI/AboutTapToPayInfoView.hpp"

#include <string>

#include "ToviUI/AboutTapToPayLineView.hpp"
#include "ToviUI/SheetHeader.hpp"
#include "ToviUI/ToviDesignSystem.hpp"
#include "ToviUI/ToviLocalization.hpp"
#include "platform/view/Builders.hpp"

namespace tovi {

using namespace platform::view;

Node AboutTapToPayInfoView::body() const {
    const auto& ds = ToviDesignSystem::shared();
    Node lines = VStack(ForEach(uiModel.lineItems,
                                [this](AboutTapToPayLineType type) {
                                    return AboutTapToPayLineView{uiModel, type}.body().id(std::string(rawValue(type)));
                                }),
                        Alignment::leading, 20);
    return VStack({SheetHeader{localized("Add to Apple Wallet")}.body().padding(Edge::bottom, 20),
                   ScrollView(std::move(lines), Axis::vertical, false),
                   Text(localized("This is not a credit product and your credit score will not be affected. Adding "
                                  "your balance to Apple Wallet lets you spend your balance at the register."))
                       .font(ds.fonts.footnote)
                       .foregroundColor(ds.colors.text.secondary)})
        .viewType("AboutTapToPayInfoView");
}

}  // namespace tovi
