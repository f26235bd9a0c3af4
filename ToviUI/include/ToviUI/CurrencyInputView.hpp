#pragma once
// CurrencyInputView: the custom amount of the add funds sheet. A row with the dollars entry
// field and a clear button, outlined more strongly while the custom amount is the selection,
// and below it, for a positive amount and a present range, the range message and the bonus
// hint of the highest tier reached.
//
//     CurrencyInputView{.value = customAmount.binding(), .isSelected = true, .validCurrencyRange = range}
//
// Thread safety: main queue only.

#include <optional>
#include <string>

#include "ToviUI/CustomCurrencyInput.hpp"
#include "platform/view/Node.hpp"
#include "platform/view/Scope.hpp"
#include "platform/view/State.hpp"

namespace tovi {

struct CurrencyInputView {
    static constexpr const char* kTypeName = "CurrencyInputView";

    platform::view::Binding<std::optional<double>> value;  // dollars
    bool isSelected = false;
    // Bounds and bonus tiers; absent means no message and no hint.
    std::optional<CustomCurrencyInputUiModel> validCurrencyRange = std::nullopt;

    // "Amount must be at least $5.00" / "Amount must be less than $100.00" for `dollars`
    // (truncated to cents), in "en_US" dollars whatever the locale; absent inside the range.
    [[nodiscard]] static std::optional<std::string> rangeMessage(const CustomCurrencyInputUiModel& range,
                                                                 double dollars);
    // "+ $3.00 bonus" for the highest tier whose amount `dollars` reaches (the later of equal
    // tiers); absent when no tier is reached or that tier carries no bonus. A bonus of 0 shows.
    [[nodiscard]] static std::optional<std::string> bonusHint(const CustomCurrencyInputUiModel& range, double dollars);

    [[nodiscard]] platform::view::Node body(platform::view::Scope& scope) const;
};

}  // namespace tovi
