#include "ToviUI/TransactionUiModel.hpp"

#include "ToviUI/CurrencyFormat.hpp"
#include "ToviUI/Hasher.hpp"
#include "platform/DateFormatter.hpp"

namespace tovi {

std::optional<std::string> transactionDateText(std::string_view created) {
    // Both formatters are made per call, so a change of locale or time zone shows at once.
    auto parser = platform::DateFormatter::make("yyyy-MM-dd'T'HH:mm:ss.SSSZ");
    if (!parser) return std::nullopt;
    // "UTC" always exists; should it not, the parser keeps the device's zone.
    (void)parser->setTimeZone("UTC");
    auto date = parser->parse(std::string(created));
    if (!date) return std::nullopt;

    auto printer = platform::DateFormatter::make("MMM d \u2022 hh:mm a");
    if (!printer) return std::nullopt;
    return printer->format(*date);
}

TransactionUiModel makeTransactionUiModel(const ToviSharedTransaction& record) {
    return TransactionUiModel{
        .id = record.id,
        .transactionText = record.displayName,
        .dataAndTimeText = transactionDateText(record.created).value_or(""),
        .amount = formatCurrencyAmount(centsToDollars(record.amount)),
        .isCredit = record.isCredit,
    };
}

std::vector<TransactionUiModel> makeTransactionUiModels(const ToviSharedTransactionResult& result) {
    std::vector<TransactionUiModel> rows;
    rows.reserve(result.transactions.size());
    for (const auto& record : result.transactions) rows.push_back(makeTransactionUiModel(record));
    return rows;
}

}  // namespace tovi

std::size_t std::hash<tovi::TransactionUiModel>::operator()(const tovi::TransactionUiModel& row) const noexcept {
    return tovi::Hasher()
        .combine(row.id)
        .combine(row.transactionText)
        .combine(row.dataAndTimeText)
        .combine(row.amount)
        .combine(row.isCredit)
        .finish();
}
