#pragma once
// AddNewPaymentMethodRowView: the picker's last row, shaped like a card row: a plus in the
// image's place and "Add New Card". The picker makes it tappable.

#include "platform/view/Node.hpp"

namespace tovi {

struct AddNewPaymentMethodRowView {
    [[nodiscard]] platform::view::Node body() const;
    operator platform::view::Node() const { return body(); }  // NOLINT(google-explicit-constructor)
};

}  // namespace tovi
