#pragma once
// One preset reload amount, and the choice between a preset and a typed amount.

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace tovi {

struct ReloadBucketUiModel {
    std::string id;                           // the only field compared by `isSelected`
    std::int64_t reloadAmount = 0;            // cents
    std::optional<std::int64_t> bonusAmount;  // cents credited on top; absent means no promotion

    // A present bonus of at least one cent.
    [[nodiscard]] bool hasBonus() const { return bonusAmount.has_value() && *bonusAmount >= 1; }

    // Current-locale currency text of the amount.
    [[nodiscard]] std::string topUpAmountDisplayString() const;

    // Current-locale currency text of the bonus; present for any present bonus, also 0.
    [[nodiscard]] std::optional<std::string> bonusAmountDisplayString() const;

    friend bool operator==(const ReloadBucketUiModel&, const ReloadBucketUiModel&) = default;
};

struct ReloadAmountPreconfigured {
    ReloadBucketUiModel bucket;
};

struct ReloadAmountCustom {
    double dollars = 0;  // as typed
};

// The user's choice of amount. Held as an optional everywhere: absent means nothing chosen.
// Neither equatable nor hashable, by design: a typed double is not compared.
using ReloadAmountSelection = std::variant<ReloadAmountPreconfigured, ReloadAmountCustom>;

// True only for a preset whose id equals this bucket's id; amount and bonus are not compared.
[[nodiscard]] bool isSelected(const ReloadBucketUiModel& bucket,
                              const std::optional<ReloadAmountSelection>& currentSelection);

// True when any bucket has a bonus; false for none.
[[nodiscard]] bool hasBonus(const std::vector<ReloadBucketUiModel>& buckets);

// The first bucket with a bonus greater than 0; failing that the first bucket; absent for none.
[[nodiscard]] std::optional<ReloadBucketUiModel> getDefaultBucket(const std::vector<ReloadBucketUiModel>& buckets);

}  // namespace tovi

// id, reloadAmount, then a presence discriminator and the bonus when present.
template <>
struct std::hash<tovi::ReloadBucketUiModel> {
    std::size_t operator()(const tovi::ReloadBucketUiModel& bucket) const noexcept;
};
