#include "ToviUI/CustomCurrencyInput.hpp"

#include <algorithm>

#include "ToviUI/CurrencyFormat.hpp"
#include "ToviUI/Hasher.hpp"

namespace tovi {

CustomCurrencyInputUiModel::CustomCurrencyInputUiModel(std::optional<std::int64_t> minimum,
                                                       std::optional<std::int64_t> maximum,
                                                       std::optional<std::vector<ReloadBucketUiModel>> reloadBuckets)
    : minimum_(minimum), maximum_(maximum) {
    if (!reloadBuckets) return;
    std::erase_if(*reloadBuckets, [](const ReloadBucketUiModel& bucket) { return !bucket.bonusAmount.has_value(); });
    // Stable: tiers of equal amount keep the backend's order.
    std::ranges::stable_sort(*reloadBuckets, {}, &ReloadBucketUiModel::reloadAmount);
    reloadBuckets_ = std::move(reloadBuckets);
}

std::optional<std::int64_t> CustomCurrencyInputSetting::minimumAmount() const {
    return model_ ? model_->minimum() : std::nullopt;
}

std::optional<std::int64_t> CustomCurrencyInputSetting::maximumAmount() const {
    return model_ ? model_->maximum() : std::nullopt;
}

bool CustomCurrencyInputSetting::isInputValid(std::int64_t input) const {
    if (!model_) return true;
    if (model_->minimum() && *model_->minimum() > input) return false;
    if (model_->maximum() && *model_->maximum() < input) return false;
    return true;
}

std::optional<std::string> CustomCurrencyInputSetting::inputErrorMessage(std::int64_t input) const {
    if (!model_) return std::nullopt;
    if (model_->minimum() && *model_->minimum() > input) {
        return "Amount must be at least " + formatUsdAmount(centsToDollars(*model_->minimum()));
    }
    // "less than" although the maximum itself is accepted: the wording is kept as it stands.
    if (model_->maximum() && *model_->maximum() < input) {
        return "Amount must be less than " + formatUsdAmount(centsToDollars(*model_->maximum()));
    }
    return std::nullopt;
}

}  // namespace tovi

std::size_t std::hash<tovi::CustomCurrencyInputUiModel>::operator()(
    const tovi::CustomCurrencyInputUiModel& model) const noexcept {
    tovi::Hasher hasher;
    hasher.combine(model.minimum()).combine(model.maximum());
    const auto& buckets = model.reloadBuckets();
    hasher.combine(buckets.has_value());
    if (buckets) {
        hasher.combine(buckets->size());
        for (const auto& bucket : *buckets) hasher.combine(std::hash<tovi::ReloadBucketUiModel>{}(bucket));
    }
    return hasher.finish();
}

std::size_t std::hash<tovi::CustomCurrencyInputSetting>::operator()(
    const tovi::CustomCurrencyInputSetting& setting) const noexcept {
    // Case index first (enabled 0, disabled 1), then the payload.
    tovi::Hasher hasher;
    hasher.combine(setting.isEnabled() ? 0 : 1);
    if (setting.model()) hasher.combine(std::hash<tovi::CustomCurrencyInputUiModel>{}(*setting.model()));
    return hasher.finish();
}
