#pragma once
// What the tap to pay rows need to know: the merchant's name and the instruction lines.

#include <string>
#include <vector>

namespace tovi {

// The three instruction lines of the "about tap to pay" explanation, in display order.
enum class AboutTapToPayLineType { addToWallet, checkout, use };

struct TapToPayUiModel {
    // Fills `lineItems` with every line, in order.
    explicit TapToPayUiModel(std::string merchantName);

    std::string merchantName;  // shown in texts and set as the pass description
    std::vector<AboutTapToPayLineType> lineItems;

    friend bool operator==(const TapToPayUiModel&, const TapToPayUiModel&) = default;
};

}  // namespace tovi
