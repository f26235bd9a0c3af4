#pragma once
// Records that the wallet backend hands back through `ToviClient`.
//
// They carry exactly the properties that the wallet screens read. Every amount is an integer
// number of cents; conversion to dollars happens only when a display string is made. Records
// are plain values: a screen copies what it needs and never writes back.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tovi {

struct ToviSharedBalance {
    std::int64_t amount = 0;  // cents

    friend bool operator==(const ToviSharedBalance&, const ToviSharedBalance&) = default;
};

struct ToviSharedCard {
    std::string brand;  // network name as the backend spells it ("visa", "mastercard", ...)
    std::string firstSix;
    std::string lastFour;

    friend bool operator==(const ToviSharedCard&, const ToviSharedCard&) = default;
};

struct ToviSharedPaymentMethod {
    std::string id;
    ToviSharedCard card;

    friend bool operator==(const ToviSharedPaymentMethod&, const ToviSharedPaymentMethod&) = default;
};

// The customer's saved auto reload state. The amounts are boxed on the wire and may be absent.
struct ToviSharedAutoReloadConfiguration {
    bool enabled = false;
    std::optional<std::string> paymentMethodId;
    std::optional<std::int64_t> reloadAmount;     // cents
    std::optional<std::int64_t> reloadThreshold;  // cents; a reload runs below it

    friend bool operator==(const ToviSharedAutoReloadConfiguration&,
                           const ToviSharedAutoReloadConfiguration&) = default;
};

struct ToviSharedCustomer {
    ToviSharedBalance balance;
    std::vector<ToviSharedPaymentMethod> paymentMethods;  // backend order
    std::optional<ToviSharedAutoReloadConfiguration> autoReloadConfig;

    friend bool operator==(const ToviSharedCustomer&, const ToviSharedCustomer&) = default;
};

struct ToviSharedPresetReloadAmounts {
    std::string id;
    std::int32_t amount = 0;  // cents

    friend bool operator==(const ToviSharedPresetReloadAmounts&, const ToviSharedPresetReloadAmounts&) = default;
};

// The merchant's limits for typed and automatic reloads, in cents.
struct ToviSharedMerchantAutoReloadConfiguration {
    std::int32_t minimumAutoReloadAmount = 0;
    std::int32_t maximumAutoReloadAmount = 0;
    std::int32_t minimumAutoReloadThreshold = 0;

    friend bool operator==(const ToviSharedMerchantAutoReloadConfiguration&,
                           const ToviSharedMerchantAutoReloadConfiguration&) = default;
};

struct ToviSharedAppReloadConfiguration {
    std::vector<ToviSharedPresetReloadAmounts> presetAmounts;
    bool allowCustomAmount = false;

    friend bool operator==(const ToviSharedAppReloadConfiguration&, const ToviSharedAppReloadConfiguration&) = default;
};

struct ToviSharedMerchantMetadata {
    ToviSharedMerchantAutoReloadConfiguration autoReloadConfiguration;
    ToviSharedAppReloadConfiguration appReloadConfiguration;

    friend bool operator==(const ToviSharedMerchantMetadata&, const ToviSharedMerchantMetadata&) = default;
};

struct ToviSharedMerchant {
    std::string name;
    ToviSharedMerchantMetadata metadata;

    friend bool operator==(const ToviSharedMerchant&, const ToviSharedMerchant&) = default;
};

struct ToviSharedUserPresetReloadAmounts {
    std::string id;
    std::int32_t amount = 0;           // cents
    std::int32_t promotionAmount = 0;  // cents; zero or less means no promotion

    friend bool operator==(const ToviSharedUserPresetReloadAmounts&,
                           const ToviSharedUserPresetReloadAmounts&) = default;
};

struct ToviSharedUserReloadConfiguration {
    std::vector<ToviSharedUserPresetReloadAmounts> presetAmounts;
    bool allowCustomAmount = false;

    friend bool operator==(const ToviSharedUserReloadConfiguration&,
                           const ToviSharedUserReloadConfiguration&) = default;
};

struct ToviSharedTransaction {
    std::string id;
    std::string displayName;
    std::string created;           // "yyyy-MM-dd'T'HH:mm:ss.SSSZ"
    std::int32_t amount = 0;       // cents, signed as the backend sends it
    std::optional<bool> isCredit;  // absent when the backend does not say

    friend bool operator==(const ToviSharedTransaction&, const ToviSharedTransaction&) = default;
};

// One page of history; only the first page is ever requested.
struct ToviSharedTransactionResult {
    std::vector<ToviSharedTransaction> transactions;  // display order

    friend bool operator==(const ToviSharedTransactionResult&, const ToviSharedTransactionResult&) = default;
};

// A card issued for tap to pay. Identified by `id`, so a presented sheet can be bound to it.
struct ToviSharedVirtualCard {
    std::string id;
    std::string expMonth;
    std::string expYear;
    std::string lastFour;
    std::string cardHolderName;
    std::string cardNetwork;
    std::string state;

    friend bool operator==(const ToviSharedVirtualCard&, const ToviSharedVirtualCard&) = default;
};

// The backend's answer to a provisioning request. Each field is the base64 text of binary data.
struct ToviSharedProvisioning {
    std::string provisioningPayload;  // the activation data
    std::string ephemeralPublicKey;
    std::string encryptedData;  // the encrypted pass data

    friend bool operator==(const ToviSharedProvisioning&, const ToviSharedProvisioning&) = default;
};

// Result of `addBalance`. Nothing of it is read: success alone matters.
struct ToviSharedBalanceUpdate {
    friend bool operator==(const ToviSharedBalanceUpdate&, const ToviSharedBalanceUpdate&) = default;
};

// Constants for previews, made once on first use: every field is empty.
[[nodiscard]] const ToviSharedVirtualCard& testCreateVirtualCard();
[[nodiscard]] const ToviSharedProvisioning& testProvisionVirtualCard();

}  // namespace tovi
