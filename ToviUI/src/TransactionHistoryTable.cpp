#include "ToviUI/TransactionHistoryTable.hpp"

#include <limits>

#include "ToviUI/ToviDesignSystem.hpp"
#include "ToviUI/ToviLocalization.hpp"
#include "ToviUI/ToviTransactionView.hpp"
#include "platform/view/Builders.hpp"

namespace tovi {

using namespace platform::view;

Node TransactionHistoryTable::body() const {
    const auto& ds = ToviDesignSystem::shared();
    // The title's grey is fixed: it does not follow branding.
    std::vector<Node> children{Text(localized("Transaction History"))
                                   .font(ds.fonts.title.smallMedium)
                                   .foregroundColor(Color::hex("#333333"))
                                   .fillWidth(Alignment::leading)};
    if (transactions.empty()) {
        children.push_back(Text(localized("No transactions yet"))
                               .font(ds.fonts.body.medium)
                               .foregroundColor(ds.colors.text.secondary)
                               .frame(Frame{.height = 280, .maxWidth = std::numeric_limits<double>::infinity()}));
    }
    for (const auto& transaction : transactions) {
        children.push_back(ToviTransactionView{transaction}.body().padding(Edge::top, 20).id(transaction.id));
    }
    return VStack(std::move(children)).viewType("TransactionHistoryTable");
}

const std::vector<TransactionUiModel>& testTransactions() {
    static const std::vector<TransactionUiModel> rows{
        {"1", "Add Funds", "May 17 \u2022 9:32 AM", "$25.00", true},
        {"2", "Use Funds", "May 16 \u2022 3:32 PM", "$7.32", false},
        {"3", "Add Funds", "May 15 \u2022 7:32 AM", "$10.00", true},
        {"4", "Add Funds", "May 14 \u2022 8:56 AM", "$5.00", true},
    };
    return rows;
}

}  // namespace tovi
