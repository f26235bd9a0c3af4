#include <utility>

#include "ToviUI/AutoReloadUiModel.hpp"
#include "ToviUI/ReloadConfigurationUiModel.hpp"

namespace tovi {

namespace {

ReloadConfigurationUiModel makeConfiguration(std::vector<ReloadBucketUiModel> buckets, bool allowCustomAmount,
                                             const ToviSharedMerchant& merchant) {
    const auto& limits = merchant.metadata.autoReloadConfiguration;
    auto setting = CustomCurrencyInputSetting::disabled();
    if (allowCustomAmount) {
        setting = CustomCurrencyInputSetting::enabled(
            CustomCurrencyInputUiModel(limits.minimumAutoReloadAmount, limits.maximumAutoReloadAmount, buckets));
    }
    return ReloadConfigurationUiModel{.reloadBuckets = std::move(buckets), .customCurrencyInputSetting = setting};
}

}  // namespace

ReloadConfigurationUiModel makeAppReloadConfiguration(const ToviSharedMerchant& merchant) {
    const auto& source = merchant.metadata.appReloadConfiguration;
    std::vector<ReloadBucketUiModel> buckets;
    buckets.reserve(source.presetAmounts.size());
    for (const auto& preset : source.presetAmounts) {
        buckets.push_back({.id = preset.id, .reloadAmount = preset.amount, .bonusAmount = std::nullopt});
    }
    return makeConfiguration(std::move(buckets), source.allowCustomAmount, merchant);
}

ReloadConfigurationUiModel makeUserReloadConfiguration(const ToviSharedUserReloadConfiguration& config,
                                                       const ToviSharedMerchant& merchant) {
    std::vector<ReloadBucketUiModel> buckets;
    buckets.reserve(config.presetAmounts.size());
    for (const auto& preset : config.presetAmounts) {
        std::optional<std::int64_t> bonus;
        if (preset.promotionAmount >= 1) bonus = preset.promotionAmount;
        buckets.push_back({.id = preset.id, .reloadAmount = preset.amount, .bonusAmount = bonus});
    }
    return makeConfiguration(std::move(buckets), config.allowCustomAmount, merchant);
}

AutoReloadUiModel makeAutoReloadUiModel(const std::optional<ToviSharedAutoReloadConfiguration>& record,
                                        std::int32_t minimumAutoReloadThreshold) {
    if (!record || !record->enabled) return AutoReloadDisabled{.reloadThreshold = minimumAutoReloadThreshold};
    return AutoReloadEnabled{.paymentMethodId = record->paymentMethodId,
                             .reloadAmount = record->reloadAmount,
                             .reloadThreshold = record->reloadThreshold};
}

}  // namespace tovi
