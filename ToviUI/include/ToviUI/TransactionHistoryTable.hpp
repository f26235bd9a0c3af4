#pragma once
// TransactionHistoryTable: the lower half of the balance screen: the title "Transaction
// History", then one ToviTransactionView per transaction in the order given (rows keyed by
// their id), or "No transactions yet" in a 280-point band when there are none. There is no
// paging: the rows are the one page the wallet fetched.

#include <vector>

#include "ToviUI/TransactionUiModel.hpp"
#include "platform/view/Node.hpp"

namespace tovi {

struct TransactionHistoryTable {
    std::vector<TransactionUiModel> transactions;

    [[nodiscard]] platform::view::Node body() const;
    operator platform::view::Node() const { return body(); }  // NOLINT(google-explicit-constructor)
};

// Four rows for previews and the gallery; nothing reads them at run time.
[[nodiscard]] const std::vector<TransactionUiModel>& testTransactions();

}  // namespace tovi
