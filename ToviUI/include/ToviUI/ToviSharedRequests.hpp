#pragma once
// Requests that the wallet screens build for the backend. Amounts are cents in 32 bits; the
// conversion from typed dollars happens before one of these is made.

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>

namespace tovi {

struct ToviSharedAddBalanceRequest {
    std::string customerId;
    std::int32_t amount = 0;  // cents
    std::string toviPaymentMethodId;
    std::optional<std::string> label;                            // always absent from the screens
    std::optional<std::map<std::string, std::string>> metadata;  // always absent from the screens

    friend bool operator==(const ToviSharedAddBalanceRequest&, const ToviSharedAddBalanceRequest&) = default;
};

struct ToviSharedAutoReloadConfigurationStatusEnabled {
    std::string paymentMethodId;
    std::int32_t reloadAmount = 0;     // cents
    std::int32_t reloadThreshold = 0;  // cents

    friend bool operator==(const ToviSharedAutoReloadConfigurationStatusEnabled&,
                           const ToviSharedAutoReloadConfigurationStatusEnabled&) = default;
};

// Not constructed by callers: the one shared value is `disabled()`.
class ToviSharedAutoReloadConfigurationStatusDisabled {
public:
    [[nodiscard]] static const ToviSharedAutoReloadConfigurationStatusDisabled& disabled();

    friend bool operator==(const ToviSharedAutoReloadConfigurationStatusDisabled&,
                           const ToviSharedAutoReloadConfigurationStatusDisabled&) = default;

private:
    ToviSharedAutoReloadConfigurationStatusDisabled() = default;
};

using ToviSharedAutoReloadConfigurationStatus =
    std::variant<ToviSharedAutoReloadConfigurationStatusEnabled, ToviSharedAutoReloadConfigurationStatusDisabled>;

struct ToviSharedAutoReloadConfigurationRequest {
    std::string customerId;
    ToviSharedAutoReloadConfigurationStatus status;

    friend bool operator==(const ToviSharedAutoReloadConfigurationRequest&,
                           const ToviSharedAutoReloadConfigurationRequest&) = default;
};

// The device wallet's challenge, passed on to the backend. All three are base64 text.
struct ToviSharedWalletProviderApplePay {
    std::string nonce;
    std::string nonceSignature;
    std::string certificate;  // the first certificate of the chain

    friend bool operator==(const ToviSharedWalletProviderApplePay&, const ToviSharedWalletProviderApplePay&) = default;
};

// The closed set of wallet providers; one kind exists.
using ToviSharedWalletProvider = std::variant<ToviSharedWalletProviderApplePay>;

struct ToviSharedProvisioningRequest {
    std::string customerId;
    std::string virtualCardId;
    ToviSharedWalletProvider walletProvider;

    friend bool operator==(const ToviSharedProvisioningRequest&, const ToviSharedProvisioningRequest&) = default;
};

}  // namespace tovi
