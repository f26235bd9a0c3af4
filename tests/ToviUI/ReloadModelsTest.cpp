#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "ToviUI/AutoReloadUiModel.hpp"
#include "ToviUI/CustomCurrencyInput.hpp"
#include "ToviUI/ReloadBucketUiModel.hpp"
#include "ToviUI/ReloadConfigurationUiModel.hpp"
#include "platform/Locale.hpp"
#include "platform/testing/ScopedLocale.hpp"

namespace tovi {
namespace {

ReloadBucketUiModel bucket(std::string id, std::int64_t amount, std::optional<std::int64_t> bonus = std::nullopt) {
    return {std::move(id), amount, bonus};
}

std::vector<std::string> ids(const std::vector<ReloadBucketUiModel>& buckets) {
    std::vector<std::string> out;
    for (const auto& b : buckets) out.push_back(b.id);
    return out;
}

TEST(ReloadBucket, DefaultBucketPrefersTheFirstPositiveBonus) {
    struct Row {
        const char* why;
        std::vector<ReloadBucketUiModel> buckets;
        std::optional<std::string> expected;
    };
    const Row rows[] = {
        {"a zero bonus does not count",
         {bucket("none", 100), bucket("zero", 200, 0), bucket("five", 300, 500)},
         "five"},
        {"no positive bonus: the first", {bucket("none", 100), bucket("zero", 200, 0)}, "none"},
        {"first of several bonuses", {bucket("a", 1, 5), bucket("b", 2, 9)}, "a"},
        {"empty", {}, std::nullopt},
    };
    for (const auto& row : rows) {
        auto result = getDefaultBucket(row.buckets);
        EXPECT_EQ(result ? std::optional<std::string>(result->id) : std::nullopt, row.expected) << row.why;
    }
}

TEST(ReloadBucket, BonusOfZeroIsNoBonusButStillHasADisplayString) {
    platform::ScopedLocale locale("en_US", "UTC");
    const auto zero = bucket("z", 1000, 0);
    EXPECT_FALSE(zero.hasBonus());
    EXPECT_EQ(zero.bonusAmountDisplayString(), "$0.00");
    EXPECT_EQ(bucket("n", 1000).bonusAmountDisplayString(), std::nullopt);
    EXPECT_EQ(bucket("n", 123456).topUpAmountDisplayString(), "$1,234.56");

    EXPECT_FALSE(hasBonus({}));
    EXPECT_FALSE(hasBonus({zero, bucket("n", 5)}));
    EXPECT_TRUE(hasBonus({zero, bucket("b", 5, 1)}));
}

TEST(ReloadBucket, SelectionComparesOnlyTheId) {
    const auto a = bucket("same", 1000);
    const auto b = bucket("same", 2000, 300);
    const std::optional<ReloadAmountSelection> chosen = ReloadAmountPreconfigured{a};
    EXPECT_TRUE(isSelected(a, chosen));
    EXPECT_TRUE(isSelected(b, chosen)) << "same id, different amount";
    EXPECT_FALSE(isSelected(bucket("other", 1000), chosen));
    EXPECT_FALSE(isSelected(a, std::nullopt));
    EXPECT_FALSE(isSelected(a, ReloadAmountSelection(ReloadAmountCustom{10.0})));
}

TEST(ReloadModelHashes, EqualityAndHashSeeAbsentAsDifferentFromZeroOrEmpty) {
    const std::hash<ReloadBucketUiModel> hash;
    EXPECT_NE(bucket("a", 100), bucket("a", 100, 0));
    EXPECT_NE(hash(bucket("a", 100)), hash(bucket("a", 100, 0)));
    EXPECT_EQ(hash(bucket("a", 100, 7)), hash(bucket("a", 100, 7)));
    EXPECT_NE(hash(bucket("a", 1, 2)), hash(bucket("a", 2, 1))) << "field order matters";

    const std::hash<CustomCurrencyInputUiModel> modelHash;
    const CustomCurrencyInputUiModel absent(1, 2, std::nullopt);
    const CustomCurrencyInputUiModel empty(1, 2, std::vector<ReloadBucketUiModel>{});
    EXPECT_NE(absent, empty) << "absent tiers are not an empty list";
    EXPECT_NE(modelHash(absent), modelHash(empty));
    EXPECT_NE(modelHash(CustomCurrencyInputUiModel(std::nullopt, 5, std::nullopt)),
              modelHash(CustomCurrencyInputUiModel(5, std::nullopt, std::nullopt)));
}

class CustomInputLimits : public ::testing::Test {
protected:
    platform::ScopedLocale locale{"en_US", "UTC"};
    CustomCurrencyInputSetting setting =
        CustomCurrencyInputSetting::enabled(CustomCurrencyInputUiModel(500, 10000, std::nullopt));
};

TEST_F(CustomInputLimits, BoundsAreInclusiveAndMessagesSayWhy) {
    const auto inverted = CustomCurrencyInputSetting::enabled(CustomCurrencyInputUiModel(2000, 1000, std::nullopt));
    const auto open = CustomCurrencyInputSetting::enabled(CustomCurrencyInputUiModel(std::nullopt, std::nullopt, {}));
    const auto disabled = CustomCurrencyInputSetting::disabled();
    const std::int64_t huge = std::int64_t{1} << 40;
    struct Row {
        const CustomCurrencyInputSetting& setting;
        std::int64_t cents;
        std::optional<std::string> message;  // absent: valid
        const char* why;
    };
    const Row rows[] = {
        {setting, 499, "Amount must be at least $5.00", "below the minimum"},
        {setting, 500, std::nullopt, "the minimum itself"},
        {setting, 10000, std::nullopt, "the maximum itself"},
        {setting, 10001, "Amount must be less than $100.00", "above the maximum"},
        {inverted, 1500, "Amount must be at least $20.00", "both bounds fail: the minimum first"},
        {open, -1, std::nullopt, "no bounds"},
        {open, huge, std::nullopt, "no bounds"},
        {disabled, -1, std::nullopt, "disabled"},
        {disabled, huge, std::nullopt, "disabled"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.setting.isInputValid(row.cents), !row.message) << row.why;
        EXPECT_EQ(row.setting.inputErrorMessage(row.cents), row.message) << row.why;
    }
    EXPECT_EQ(setting.minimumAmount(), 500);
    EXPECT_EQ(setting.maximumAmount(), 10000);
    EXPECT_EQ(disabled.minimumAmount(), std::nullopt);
    EXPECT_EQ(disabled.maximumAmount(), std::nullopt);
}

TEST_F(CustomInputLimits, MessagesStayInDollarsWhenTheLocaleWritesAmountsDifferently) {
    platform::ScopedLocale german("de_DE", "Europe/Berlin");
    EXPECT_EQ(setting.inputErrorMessage(10001), "Amount must be less than $100.00");
    EXPECT_EQ(bucket("b", 123450).topUpAmountDisplayString(), "1.234,50\u00A0€");
}

TEST(CustomCurrencyInputModel, KeepsOnlyBonusTiersInStableAscendingOrder) {
    const CustomCurrencyInputUiModel model(
        100, 200,
        std::vector{bucket("1000", 1000, 50), bucket("500-none", 500), bucket("2000", 2000, 100), bucket("300", 300, 0),
                    bucket("1000-late", 1000, 10)});
    ASSERT_TRUE(model.reloadBuckets());
    EXPECT_EQ(ids(*model.reloadBuckets()), (std::vector<std::string>{"300", "1000", "1000-late", "2000"}));

    const CustomCurrencyInputUiModel noBonus(1, 2, std::vector{bucket("a", 1), bucket("b", 2)});
    ASSERT_TRUE(noBonus.reloadBuckets()) << "an empty list, not absent";
    EXPECT_TRUE(noBonus.reloadBuckets()->empty());
    EXPECT_FALSE(CustomCurrencyInputUiModel(1, 2, std::nullopt).reloadBuckets());
}

class ReloadConfigurationFromRecords : public ::testing::Test {
protected:
    void SetUp() override {
        merchant.metadata.autoReloadConfiguration = {500, 10000, 700};
        merchant.metadata.appReloadConfiguration = {{{"b", 2500}, {"a", 1000}}, true};
    }
    ToviSharedMerchant merchant;
};

TEST_F(ReloadConfigurationFromRecords, UserPresetsCarryOnlyPositivePromotions) {
    const ToviSharedUserReloadConfiguration user{{{"p", 2000, 250}, {"z", 1000, 0}, {"neg", 500, -5}}, true};
    const auto config = makeUserReloadConfiguration(user, merchant);

    EXPECT_EQ(config.reloadBuckets, (std::vector{bucket("p", 2000, 250), bucket("z", 1000), bucket("neg", 500)}))
        << "source order; no bonus at 0 or below";
    const auto& model = config.customCurrencyInputSetting.model();
    ASSERT_TRUE(model);
    EXPECT_EQ(model->minimum(), 500);
    EXPECT_EQ(model->maximum(), 10000);
    EXPECT_EQ(ids(*model->reloadBuckets()), std::vector<std::string>{"p"});
}

TEST_F(ReloadConfigurationFromRecords, AppPresetsHaveNoBonusAndAnEmptyTierList) {
    const auto config = makeAppReloadConfiguration(merchant);
    EXPECT_EQ(config.reloadBuckets, (std::vector{bucket("b", 2500), bucket("a", 1000)}));
    EXPECT_TRUE(config.customCurrencyInputSetting.model()->reloadBuckets()->empty());

    merchant.metadata.appReloadConfiguration.allowCustomAmount = false;
    EXPECT_EQ(makeAppReloadConfiguration(merchant).customCurrencyInputSetting, CustomCurrencyInputSetting::disabled());
}

TEST_F(ReloadConfigurationFromRecords, AutoReloadAbsentOrOffGivesTheMerchantThreshold) {
    const AutoReloadUiModel expectedOff = AutoReloadDisabled{.reloadThreshold = 700};
    EXPECT_EQ(makeAutoReloadUiModel(std::nullopt, 700), expectedOff);
    EXPECT_EQ(makeAutoReloadUiModel(ToviSharedAutoReloadConfiguration{false, "pm", 1, 2}, 700), expectedOff);

    const ToviSharedAutoReloadConfiguration on{true, "pm", 2500, std::nullopt};
    EXPECT_EQ(makeAutoReloadUiModel(on, 700), AutoReloadUiModel(AutoReloadEnabled{"pm", 2500, std::nullopt}));
}

}  // namespace
}  // namespace tovi
