#pragma once
// ToviTransactionView: one row of the transaction history: the text and the date line on the
// left, the marked amount on the right, aligned to the top. Credits and debits differ in the
// mark only ("+ ", "- ", none when the record did not say), never in colour.

#include <string>

#include "ToviUI/TransactionUiModel.hpp"
#include "platform/view/Node.hpp"

namespace tovi {

// The mark and the amount as it stands: a debit whose amount is already negative shows both
// minus signs, since the record's sign is the backend's to decide.
[[nodiscard]] std::string transactionAmountText(const TransactionUiModel& transaction);

struct ToviTransactionView {
    TransactionUiModel uiModel;

    [[nodiscard]] platform::view::Node body() const;
    operator platform::view::Node() const { return body(); }  // NOLINT(google-explicit-constructor)
};

}  // namespace tovi
