#pragma once
// AboutTapToPayLineView: one instruction of the "about tap to pay" sheet: the line's icon
// (33x33, brand colour) beside its title and its text, in which the merchant's name is woven
// as it stands (no quoting, no case change; an empty name leaves two blanks side by side).

#include <string>
#include <string_view>

#include "ToviUI/TapToPayUiModel.hpp"
#include "ToviUI/ToviImageSource.hpp"
#include "platform/view/Node.hpp"

namespace tovi {

// "addToWallet", "checkout", "use": the line's identity in the list.
[[nodiscard]] std::string_view rawValue(AboutTapToPayLineType type);

// The icon asset, title and text of a line, the text with `merchantName` in place.
struct AboutTapToPayLine {
    ToviImageSource icon;
    std::string title;
    std::string text;
};
[[nodiscard]] AboutTapToPayLine aboutTapToPayLine(AboutTapToPayLineType type, const std::string& merchantName);

struct AboutTapToPayLineView {
    TapToPayUiModel uiModel;
    AboutTapToPayLineType lineType = AboutTapToPayLineType::addToWallet;

    [[nodiscard]] platform::view::Node body() const;
    operator platform::view::Node() const { return body(); }  // NOLINT(google-explicit-constructor)
};

}  // namespace tovi
