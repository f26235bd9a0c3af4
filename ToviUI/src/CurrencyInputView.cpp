#include "ToviUI/CurrencyInputView.hpp"

#include <ranges>

#include "ToviUI/CurrencyFormat.hpp"
#include "ToviUI/CurrencyTextFieldSwiftUIWrapper.hpp"
#include "ToviUI/ToviDesignSystem.hpp"
#include "ToviUI/ToviImage.hpp"
#include "platform/view/View.hpp"

namespace tovi {

using namespace platform::view;

std::optional<std::string> CurrencyInputView::rangeMessage(const CustomCurrencyInputUiModel& range, double dollars) {
    return CustomCurrencyInputSetting::enabled(range).inputErrorMessage(dollarsToCents(dollars));
}

std::optional<std::string> CurrencyInputView::bonusHint(const CustomCurrencyInputUiModel& range, double dollars) {
    const auto& tiers = range.reloadBuckets();
    if (!tiers || tiers->empty()) return std::nullopt;
    const std::int64_t cents = dollarsToCents(dollars);
    // Tiers ascend by amount, so the last one reached is the highest.
    for (const ReloadBucketUiModel& tier : *tiers | std::views::reverse) {
        if (tier.reloadAmount > cents) continue;
        if (!tier.bonusAmount) return std::nullopt;
        return "+ " + formatUsdAmount(centsToDollars(*tier.bonusAmount)) + " bonus";
    }
    return std::nullopt;
}

Node CurrencyInputView::body(Scope& scope) const {
    const auto& ds = ToviDesignSystem::shared();
    const std::optional<double> amount = value.get();
    const bool positive = amount && *amount > 0;

    Node field = scope.view(CurrencyTextFieldSwiftUIWrapper{.value = value,
                                                            .tag = 0,
                                                            .alwaysShowFractions = true,
                                                            .numberOfDecimalPlaces = 2,
                                                            .currencySymbol = "$",
                                                            .placeholder = "Enter custom amount",
                                                            .keyboardType = platform::KeyboardType::decimalPad});
    Node clear = positive ? ToviImage{ToviImageSource::close, RenderingMode::original}
                                .body()
                                .frame(24, 24)
                                .onTapGesture([value = value] { value.set(std::nullopt); })
                                .accessibilityIdentifier("currencyInput.clear")
                          : Node{};
    Node row = HStack({field.fillWidth(Alignment::center).accessibilityIdentifier("currencyInput.amount"), clear},
                      Alignment::center);
    row.padding(Edge::horizontal, 12)
        .font(ds.fonts.body.medium)
        .frame(Frame{.height = 60})
        // Filled and stroked in one shape behind the row, so the outline never covers the field.
        .background(RoundedRectangle(16)
                        .fill(ds.colors.background.item)
                        .stroke(isSelected ? ds.colors.brand.primary : ds.colors.borders.branded, isSelected ? 2 : 1))
        .animation(Animation::easeInOut(), "value");

    Node message;
    Node hint;
    if (positive && validCurrencyRange) {
        if (auto text = rangeMessage(*validCurrencyRange, *amount)) {
            message = Text(*std::move(text)).font(ds.fonts.footnote).foregroundColor(ds.colors.text.error);
            message.fillWidth(Alignment::leading).accessibilityIdentifier("currencyInput.message");
        }
        if (auto text = bonusHint(*validCurrencyRange, *amount)) {
            hint = Text(*std::move(text)).font(ds.fonts.footnote).foregroundColor(ds.colors.brand.primary);
            hint.fillWidth(Alignment::leading).accessibilityIdentifier("currencyInput.hint");
        }
    }
    return VStack({std::move(row), std::move(message), std::move(hint)}, Alignment::leading).viewType(kTypeName);
}

}  // namespace tovi
