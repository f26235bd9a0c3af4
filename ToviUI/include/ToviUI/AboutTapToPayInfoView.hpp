#pragma once
// AboutTapToPayInfoView: the sheet that explains how to spend the balance in a shop: a header
// "Add to Apple Wallet", one AboutTapToPayLineView per line of the model in its order, and a
// disclaimer that this is not a credit product.

#include "ToviUI/TapToPayUiModel.hpp"
#include "platform/view/Node.hpp"

namespace tovi {

struct AboutTapToPayInfoView {
    TapToPayUiModel uiModel;

    [[nodiscard]] platform::view::Node body() const;
    operator platform::view::Node() const { return body(); }  // NOLINT(google-explicit-constructor)
};

}  // namespace tovi
