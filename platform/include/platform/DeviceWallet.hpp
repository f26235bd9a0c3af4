#pragma once
// The device's wallet of payment passes, behind a seam.
//
// On a phone this is the platform's pass library and its add-pass dialog; elsewhere a host
// installs what it has, and tests install a `FakeDeviceWallet`. Without an installed wallet
// the device cannot add passes and holds none.
//
// The add-pass exchange: the caller opens the dialog with a configuration and a delegate. The
// platform then asks the delegate for a request, handing it a certificate chain, a nonce and a
// nonce signature (binary data); the delegate answers through a completion with the encrypted
// pass data, activation data and ephemeral public key (binary data, all empty for "no
// request"). Finally the platform reports a pass, an error, or neither.
//
// Thread safety: `deviceWallet()` and `setDeviceWallet()` may be called from any thread.
// Members of a wallet are called on the main queue; delegate calls may arrive on any thread.

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {

// A payment pass that the wallet shows to this application.
struct PaymentPass {
    std::string serialNumber;
    std::string primaryAccountSuffix;
    std::string localizedDescription;

    friend bool operator==(const PaymentPass&, const PaymentPass&) = default;
};

// What the add-pass dialog displays and which encryption the exchange uses.
struct AddPaymentPassConfiguration {
    std::string encryptionScheme = "ECC_V2";
    std::string cardholderName;
    std::string primaryAccountSuffix;
    std::string paymentNetwork;
    std::string localizedDescription;

    friend bool operator==(const AddPaymentPassConfiguration&, const AddPaymentPassConfiguration&) = default;
};

// The wallet's challenge. All fields hold raw bytes.
struct AddPaymentPassChallenge {
    std::vector<std::string> certificateChain;
    std::string nonce;
    std::string nonceSignature;
};

// The answer to a challenge. All fields hold raw bytes; a default value is the empty request.
struct AddPaymentPassRequest {
    std::string encryptedPassData;
    std::string activationData;
    std::string ephemeralPublicKey;

    [[nodiscard]] bool isEmpty() const {
        return encryptedPassData.empty() && activationData.empty() && ephemeralPublicKey.empty();
    }

    friend bool operator==(const AddPaymentPassRequest&, const AddPaymentPassRequest&) = default;
};

struct DeviceWalletError {
    // The code the wallet reports when the user cancels the dialog.
    static constexpr int kUserCancelled = 1;

    int code = 0;
    std::string message;

    friend bool operator==(const DeviceWalletError&, const DeviceWalletError&) = default;
};

class AddPaymentPassDelegate {
public:
    virtual ~AddPaymentPassDelegate() = default;

    // Called once per attempt; `completion` must be called exactly once, from any thread.
    virtual void generateRequest(AddPaymentPassChallenge challenge,
                                 std::move_only_function<void(AddPaymentPassRequest)> completion) = 0;

    // The dialog ended: with a pass, with an error, or with neither.
    virtual void didFinishAdding(std::optional<PaymentPass> pass, std::optional<DeviceWalletError> error) = 0;
};

class DeviceWallet {
public:
    virtual ~DeviceWallet() = default;

    // Whether this device can add payment passes at all.
    [[nodiscard]] virtual bool canAddPaymentPass() const = 0;

    // Payment passes visible to this application, in the wallet's order.
    [[nodiscard]] virtual std::vector<PaymentPass> paymentPasses() const = 0;

    // Opens the pass in the wallet.
    virtual void presentPass(const PaymentPass& pass) = 0;

    // Opens the add-pass dialog. False when the platform refuses to create it (callers treat
    // that as fatal). The wallet holds `delegate` until the dialog has finished.
    [[nodiscard]] virtual bool presentAddPaymentPass(AddPaymentPassConfiguration configuration,
                                                     std::shared_ptr<AddPaymentPassDelegate> delegate) = 0;
};

// The installed wallet; one that can do nothing until a host or test installs another.
[[nodiscard]] std::shared_ptr<DeviceWallet> deviceWallet();

// Installs `wallet`; a null pointer restores the wallet that can do nothing.
void setDeviceWallet(std::shared_ptr<DeviceWallet> wallet);

}  // namespace platform
