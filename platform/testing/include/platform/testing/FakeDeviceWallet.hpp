#pragma once
// A scriptable device wallet for tests and for a demo host.
//
// Usage:
//   auto wallet = std::make_shared<platform::FakeDeviceWallet>();
//   wallet->setCanAddPaymentPass(true);
//   platform::setDeviceWallet(wallet);
//   ...                                           // code opens the add-pass dialog
//   auto request = wallet->requestPass(challenge); // the platform asks for a request
//   wallet->finishAdding(pass, std::nullopt);      // the dialog ends; the pass is now held
//
// Thread safety: every member may be called from any thread.

#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "platform/DeviceWallet.hpp"

namespace platform {

class FakeDeviceWallet final : public DeviceWallet {
public:
    [[nodiscard]] bool canAddPaymentPass() const override;
    [[nodiscard]] std::vector<PaymentPass> paymentPasses() const override;
    void presentPass(const PaymentPass& pass) override;
    [[nodiscard]] bool presentAddPaymentPass(AddPaymentPassConfiguration configuration,
                                             std::shared_ptr<AddPaymentPassDelegate> delegate) override;

    void setCanAddPaymentPass(bool can);
    void setPaymentPasses(std::vector<PaymentPass> passes);
    // Makes the next dialog creation fail.
    void refuseNextDialog();

    // The configuration of the open dialog, if one is open.
    [[nodiscard]] std::optional<AddPaymentPassConfiguration> openDialog() const;
    [[nodiscard]] std::vector<PaymentPass> presentedPasses() const;

    // Plays the platform's side of the exchange: asks the open dialog's delegate for a request.
    // Returns absent when no dialog is open or the delegate has not answered by the time it
    // returns (the answer is still recorded as `lastRequest`).
    std::optional<AddPaymentPassRequest> requestPass(AddPaymentPassChallenge challenge);
    [[nodiscard]] std::optional<AddPaymentPassRequest> lastRequest() const;

    // Ends the open dialog. A pass without an error joins the wallet's passes.
    void finishAdding(std::optional<PaymentPass> pass, std::optional<DeviceWalletError> error);

private:
    mutable std::mutex mutex_;
    bool canAdd_ = false;
    bool refuseNext_ = false;
    std::vector<PaymentPass> passes_;
    std::vector<PaymentPass> presented_;
    std::optional<AddPaymentPassConfiguration> openConfiguration_;
    std::shared_ptr<AddPaymentPassDelegate> delegate_;
    // Shared with pending completions, so that a late answer never reaches a dead wallet.
    struct Answer {
        std::mutex mutex;
        std::optional<AddPaymentPassRequest> request;
    };
    std::shared_ptr<Answer> answer_ = std::make_shared<Answer>();
};

}  // namespace platform
