#include "ToviUI/ReloadBucketUiModel.hpp"

#include <algorithm>

#include "ToviUI/CurrencyFormat.hpp"
#include "ToviUI/Hasher.hpp"

namespace tovi {

std::string ReloadBucketUiModel::topUpAmountDisplayString() const {
    return formatCurrencyAmount(centsToDollars(reloadAmount));
}

std::optional<std::string> ReloadBucketUiModel::bonusAmountDisplayString() const {
    if (!bonusAmount) return std::nullopt;
    return formatCurrencyAmount(centsToDollars(*bonusAmount));
}

bool isSelected(const ReloadBucketUiModel& bucket, const std::optional<ReloadAmountSelection>& currentSelection) {
    if (!currentSelection) return false;
    const auto* preset = std::get_if<ReloadAmountPreconfigured>(&*currentSelection);
    return preset != nullptr && preset->bucket.id == bucket.id;
}

bool hasBonus(const std::vector<ReloadBucketUiModel>& buckets) {
    return std::ranges::any_of(buckets, &ReloadBucketUiModel::hasBonus);
}

std::optional<ReloadBucketUiModel> getDefaultBucket(const std::vector<ReloadBucketUiModel>& buckets) {
    auto withBonus = std::ranges::find_if(buckets, [](const ReloadBucketUiModel& bucket) {
        return bucket.bonusAmount.has_value() && *bucket.bonusAmount > 0;
    });
    if (withBonus != buckets.end()) return *withBonus;
    if (buckets.empty()) return std::nullopt;
    return buckets.front();
}

}  // namespace tovi

std::size_t std::hash<tovi::ReloadBucketUiModel>::operator()(const tovi::ReloadBucketUiModel& bucket) const noexcept {
    return tovi::Hasher().combine(bucket.id).combine(bucket.reloadAmount).combine(bucket.bonusAmount).finish();
}
