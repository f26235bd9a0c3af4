#pragma once
// Reload configurations (presets and custom amount rules), and how they are built from client
// records.

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "ToviUI/CustomCurrencyInput.hpp"
#include "ToviUI/ReloadBucketUiModel.hpp"
#include "ToviUI/ToviSharedRecords.hpp"

namespace tovi {

struct ReloadConfigurationUiModel {
    std::vector<ReloadBucketUiModel> reloadBuckets;  // source order
    CustomCurrencyInputSetting customCurrencyInputSetting = CustomCurrencyInputSetting::disabled();

    friend bool operator==(const ReloadConfigurationUiModel&, const ReloadConfigurationUiModel&) = default;
};

// The merchant's presets: no bucket carries a bonus, so the custom model's tier list is empty.
// Bounds come from the merchant's minimum and maximum auto reload amounts.
[[nodiscard]] ReloadConfigurationUiModel makeAppReloadConfiguration(const ToviSharedMerchant& merchant);

// The customer's presets: a bucket's bonus is its promotion when that is at least 1 cent.
// Bounds come from the merchant, as above.
[[nodiscard]] ReloadConfigurationUiModel makeUserReloadConfiguration(const ToviSharedUserReloadConfiguration& config,
                                                                     const ToviSharedMerchant& merchant);

}  // namespace tovi
