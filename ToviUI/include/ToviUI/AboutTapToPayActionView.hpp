#pragma once
// AboutTapToPayActionView: the row "How to use your balance in-store" under the add to wallet
// row. A tap presents AboutTapToPayInfoView as a sheet (one large detent, drag indicator
// shown); the sheet's presentation is this view's own state, so host it through a Scope:
//
//     s.view(AboutTapToPayActionView{tapToPayUiModel})

#include <functional>

#include "ToviUI/TapToPayUiModel.hpp"
#include "platform/view/Node.hpp"
#include "platform/view/Scope.hpp"

namespace tovi {

struct AboutTapToPayActionView {
    static constexpr const char* kTypeName = "AboutTapToPayActionView";

    TapToPayUiModel uiModel;

    [[nodiscard]] platform::view::Node body(platform::view::Scope& s) const;
    // The row with the sheet shown or not, for previews that hold no state.
    [[nodiscard]] platform::view::Node body(bool showAboutTapToPayScreen, std::function<void(bool)> setShown) const;
};

}  // namespace tovi
