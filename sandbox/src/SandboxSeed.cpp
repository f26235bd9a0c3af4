#include "sandbox/SandboxSeed.hpp"

namespace tovi::sandbox {

namespace {

ToviSharedTransaction credit(std::string id, std::string name, std::string created, std::int32_t cents) {
    return {std::move(id), std::move(name), std::move(created), cents, true};
}

ToviSharedTransaction debit(std::string id, std::string name, std::string created, std::int32_t cents) {
    return {std::move(id), std::move(name), std::move(created), cents, false};
}

}  // namespace

SandboxSeed SandboxSeed::standard() {
    SandboxSeed seed;
    seed.customerId = "cus_sandbox_alex";
    seed.merchantId = "mer_sandbox_driftwood";
    seed.cardHolderName = "Alex Morgan";
    seed.korvaneApiKey = "key_sandbox_pub_8GqT2mXw4Lr9";
    seed.cardArtUrls = {"https://assets.sandbox.tovi.example/card-art/driftwood-coffee.png"};

    seed.merchant.name = "Driftwood Coffee";
    seed.merchant.metadata.autoReloadConfiguration = {
        .minimumAutoReloadAmount = 1000, .maximumAutoReloadAmount = 25000, .minimumAutoReloadThreshold = 500};
    seed.merchant.metadata.appReloadConfiguration = {
        .presetAmounts = {{"preset_10", 1000}, {"preset_25", 2500}, {"preset_50", 5000}, {"preset_100", 10000}},
        .allowCustomAmount = true,
    };
    seed.userReloadConfiguration = {
        .presetAmounts = {{"preset_10", 1000, 0},
                          {"preset_25", 2500, 250},
                          {"preset_50", 5000, 750},
                          {"preset_100", 10000, 2000}},
        .allowCustomAmount = true,
    };

    seed.customer.balance.amount = 4275;
    seed.customer.paymentMethods = {
        {"pm_sandbox_visa_4242", {"visa", "424242", "4242"}},
        {"pm_sandbox_mc_4444", {"mastercard", "555555", "4444"}},
    };
    seed.customer.autoReloadConfig = ToviSharedAutoReloadConfiguration{};  // saved once, now off

    seed.transactions = {
        debit("txn_sb_0009", "Oat milk latte", "2026-11-21T15:42:18.204Z", 575),
        debit("txn_sb_0008", "Cold brew & almond croissant", "2026-11-20T08:12:55.000Z", 925),
        credit("txn_sb_0007", "Reload bonus", "2026-11-18T17:03:09.512Z", 250),
        credit("txn_sb_0006", "Wallet reload", "2026-11-18T17:03:09.498Z", 2500),
        debit("txn_sb_0005", "Whole beans: Guji, 12 oz", "2026-11-16T11:27:40.310Z", 1899),
        credit("txn_sb_0004", "Refund: duplicate charge", "2026-11-14T09:55:02.000Z", 575),
        debit("txn_sb_0003", "Espresso", "2026-11-14T09:51:47.776Z", 350),
        {"txn_sb_0002", "Balance adjustment", "2026-11-10T12:00:00.000Z", 126, std::nullopt},
        credit("txn_sb_0001", "Wallet reload", "2026-11-09T19:20:31.090Z", 5000),
    };
    return seed;
}

}  // namespace tovi::sandbox
