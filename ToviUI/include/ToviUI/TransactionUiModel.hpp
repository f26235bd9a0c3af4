#pragma once
// A row of the transaction history.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ToviUI/ToviSharedRecords.hpp"

namespace tovi {

struct TransactionUiModel {
    std::string id;
    std::string transactionText;
    std::string dataAndTimeText;  // spelt so on purpose; empty when the date did not parse
    std::string amount;           // formatted, without a credit or debit mark
    std::optional<bool> isCredit;

    friend bool operator==(const TransactionUiModel&, const TransactionUiModel&) = default;
};

// The date steps: parses `created` with "yyyy-MM-dd'T'HH:mm:ss.SSSZ" in UTC (device locale)
// and writes it as "MMM d • hh:mm a" in the device's locale and time zone. Absent when the
// text does not parse. Makes its two formatters anew on every call, so it follows the
// current locale and time zone.
[[nodiscard]] std::optional<std::string> transactionDateText(std::string_view created);

// Maps one record: date by the steps above (empty when absent), amount as
// `formatCurrencyAmount(cents / 100.0)` with the sign the backend sent.
[[nodiscard]] TransactionUiModel makeTransactionUiModel(const ToviSharedTransaction& record);
[[nodiscard]] std::vector<TransactionUiModel> makeTransactionUiModels(const ToviSharedTransactionResult& result);

}  // namespace tovi

template <>
struct std::hash<tovi::TransactionUiModel> {
    std::size_t operator()(const tovi::TransactionUiModel& transaction) const noexcept;
};
