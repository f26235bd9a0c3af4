#include "platform/DeviceWallet.hpp"

#include <mutex>
#include <utility>

namespace platform {

namespace {

// A device without a wallet: nothing can be added and nothing is held.
class NoDeviceWallet final : public DeviceWallet {
public:
    bool canAddPaymentPass() const override { return false; }
    std::vector<PaymentPass> paymentPasses() const override { return {}; }
    void presentPass(const PaymentPass&) override {}
    bool presentAddPaymentPass(AddPaymentPassConfiguration, std::shared_ptr<AddPaymentPassDelegate>) override {
        return false;
    }
};

std::mutex& walletMutex() {
    static std::mutex mutex;
    return mutex;
}

// Guarded by walletMutex().
std::shared_ptr<DeviceWallet>& installedWallet() {
    static std::shared_ptr<DeviceWallet> wallet = std::make_shared<NoDeviceWallet>();
    return wallet;
}

}  // namespace

std::shared_ptr<DeviceWallet> deviceWallet() {
    std::lock_guard lock(walletMutex());
    return installedWallet();
}

void setDeviceWallet(std::shared_ptr<DeviceWallet> wallet) {
    if (!wallet) wallet = std::make_shared<NoDeviceWallet>();
    std::shared_ptr<DeviceWallet> previous;
    {
        std::lock_guard lock(walletMutex());
        previous = std::exchange(installedWallet(), std::move(wallet));
    }
    // `previous` is released here, outside the lock, in case its destructor reads the wallet.
}

}  // namespace platform
