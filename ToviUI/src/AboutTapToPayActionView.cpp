#include "ToviUI/AboutTapToPayActionView.hpp"

#include "ToviUI/AboutTapToPayInfoView.hpp"
#include "ToviUI/ToviActionView.hpp"
#include "ToviUI/ToviLocalization.hpp"
#include "platform/view/Builders.hpp"

namespace tovi {

using namespace platform::view;

Node AboutTapToPayActionView::body(Scope& s) const {
    auto shown = s.state("showAboutTapToPayScreen", false);
    return body(shown.get(), [shown](bool value) { shown.set(value); });
}

Node AboutTapToPayActionView::body(bool showAboutTapToPayScreen, std::function<void(bool)> setShown) const {
    return ToviActionView{.icon = SystemImage("info.circle").resizable().renderingMode(RenderingMode::templated),
                          .label = localized("How to use your balance in-store"),
                          .subtitle = localized("Tap your Apple Wallet at the register."),
                          .onClick = [setShown] { setShown(true); }}
        .body()
        .sheet(showAboutTapToPayScreen, AboutTapToPayInfoView{uiModel}.body().fillHeight(Alignment::top),
               SheetOptions{.detents = {Detent::large()}, .dragIndicatorVisible = true},
               [setShown] { setShown(false); });
}

}  // namespace tovi
