#pragma once
// The rules for a typed amount: bounds in cents and the bonus tiers a typed amount can earn.

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "ToviUI/ReloadBucketUiModel.hpp"

namespace tovi {

class CustomCurrencyInputUiModel {
public:
    // Keeps only the buckets with a present bonus (of any value), stably sorted by amount
    // ascending. Absent stays absent; a list without bonuses becomes an empty list.
    CustomCurrencyInputUiModel(std::optional<std::int64_t> minimum, std::optional<std::int64_t> maximum,
                               std::optional<std::vector<ReloadBucketUiModel>> reloadBuckets);

    [[nodiscard]] const std::optional<std::int64_t>& minimum() const { return minimum_; }
    [[nodiscard]] const std::optional<std::int64_t>& maximum() const { return maximum_; }
    // Ascending by amount; the bonus hint relies on the order.
    [[nodiscard]] const std::optional<std::vector<ReloadBucketUiModel>>& reloadBuckets() const {
        return reloadBuckets_;
    }

    friend bool operator==(const CustomCurrencyInputUiModel&, const CustomCurrencyInputUiModel&) = default;

private:
    std::optional<std::int64_t> minimum_;  // cents, inclusive; absent means no lower bound
    std::optional<std::int64_t> maximum_;  // cents, inclusive; absent means no upper bound
    std::optional<std::vector<ReloadBucketUiModel>> reloadBuckets_;
};

// Whether a typed amount is allowed, and within which bounds.
class CustomCurrencyInputSetting {
public:
    [[nodiscard]] static CustomCurrencyInputSetting enabled(CustomCurrencyInputUiModel model) {
        return CustomCurrencyInputSetting(std::move(model));
    }
    [[nodiscard]] static CustomCurrencyInputSetting disabled() { return CustomCurrencyInputSetting(); }

    [[nodiscard]] bool isEnabled() const { return model_.has_value(); }
    // The payload of `enabled`; absent when disabled.
    [[nodiscard]] const std::optional<CustomCurrencyInputUiModel>& model() const { return model_; }

    [[nodiscard]] std::optional<std::int64_t> minimumAmount() const;
    [[nodiscard]] std::optional<std::int64_t> maximumAmount() const;

    // `input` in cents. Disabled accepts everything; both bounds are inclusive.
    [[nodiscard]] bool isInputValid(std::int64_t input) const;

    // "Amount must be at least $5.00" below the minimum (tested first), "Amount must be less
    // than $100.00" above the maximum, in "en_US" dollars whatever the locale; absent otherwise.
    [[nodiscard]] std::optional<std::string> inputErrorMessage(std::int64_t input) const;

    friend bool operator==(const CustomCurrencyInputSetting&, const CustomCurrencyInputSetting&) = default;

private:
    CustomCurrencyInputSetting() = default;
    explicit CustomCurrencyInputSetting(CustomCurrencyInputUiModel model) : model_(std::move(model)) {}

    std::optional<CustomCurrencyInputUiModel> model_;
};

}  // namespace tovi

template <>
struct std::hash<tovi::CustomCurrencyInputUiModel> {
    std::size_t operator()(const tovi::CustomCurrencyInputUiModel& model) const noexcept;
};

template <>
struct std::hash<tovi::CustomCurrencyInputSetting> {
    std::size_t operator()(const tovi::CustomCurrencyInputSetting& setting) const noexcept;
};
