#pragma once
// PaymentMethodRowView: one saved card in the picker, 50 points high: the brand image (46x32),
// the card's text with "Expired" under it when it is, and a check mark at the end when it is
// the selection.

#include <string>

#include "ToviUI/ToviImageSource.hpp"
#include "platform/view/Node.hpp"

namespace tovi {

struct PaymentMethodRowView {
    ToviImageSource imageSource = ToviImageSource::placeholderCard;
    std::string cardDetailsDisplayText;
    bool isExpired = false;
    bool isSelected = false;

    [[nodiscard]] platform::view::Node body() const;
    operator platform::view::Node() const { return body(); }  // NOLINT(google-explicit-constructor)
};

}  // namespace tovi
