#include "ToviUI/ToviTransactionView.hpp"

#include <array>
#include <optional>
#include <string_view>

#include "ToviUI/ToviDesignSystem.hpp"
#include "platform/view/Builders.hpp"

namespace tovi {

using namespace platform::view;

namespace {

struct AmountMark {
    std::optional<bool> isCredit;
    std::string_view mark;
};

constexpr std::array<AmountMark, 3> kAmountMarks{{
    {true, "+ "},
    {false, "- "},
    {std::nullopt, ""},
}};

}  // namespace

std::string transactionAmountText(const TransactionUiModel& transaction) {
    for (const auto& row : kAmountMarks) {
        if (row.isCredit == transaction.isCredit) return std::string(row.mark) + transaction.amount;
    }
    return transaction.amount;
}

Node ToviTransactionView::body() const {
    const auto& ds = ToviDesignSystem::shared();
    // The date line and the amount come from the record: they are shown, never translated. The
    // column takes the free width (the flexible space between it and the amount), so a long
    // name wraps beside the amount instead of pushing it out.
    return HStack(
               {VStack(
                    {Text(uiModel.transactionText)
                         .font(ds.fonts.title.smallSemiBold)
                         .foregroundColor(ds.colors.text.primary),
                     Text(uiModel.dataAndTimeText).font(ds.fonts.footnote).foregroundColor(ds.colors.text.secondary)},
                    Alignment::leading, 4)
                    .fillWidth(Alignment::leading),
                Text(transactionAmountText(uiModel)).font(Font::headline()).foregroundColor(ds.colors.text.primary)},
               Alignment::top)
        .viewType("ToviTransactionView");
}

}  // namespace tovi
