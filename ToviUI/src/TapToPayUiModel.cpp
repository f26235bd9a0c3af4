#include "ToviUI/TapToPayUiModel.hpp"

#include <utility>

namespace tovi {

TapToPayUiModel::TapToPayUiModel(std::string merchantName)
    : merchantName(std::move(merchantName)),
      lineItems{AboutTapToPayLineType::addToWallet, AboutTapToPayLineType::checkout, AboutTapToPayLineType::use} {}

}  // namespace tovi
