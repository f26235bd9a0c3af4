#include "platform/testing/FakeDeviceWallet.hpp"

#include <utility>

namespace platform {

bool FakeDeviceWallet::canAddPaymentPass() const {
    std::lock_guard lock(mutex_);
    return canAdd_;
}

std::vector<PaymentPass> FakeDeviceWallet::paymentPasses() const {
    std::lock_guard lock(mutex_);
    return passes_;
}

void FakeDeviceWallet::presentPass(const PaymentPass& pass) {
    std::lock_guard lock(mutex_);
    presented_.push_back(pass);
}

bool FakeDeviceWallet::presentAddPaymentPass(AddPaymentPassConfiguration configuration,
                                             std::shared_ptr<AddPaymentPassDelegate> delegate) {
    std::lock_guard lock(mutex_);
    if (std::exchange(refuseNext_, false)) return false;
    openConfiguration_ = std::move(configuration);
    delegate_ = std::move(delegate);
    return true;
}

void FakeDeviceWallet::setCanAddPaymentPass(bool can) {
    std::lock_guard lock(mutex_);
    canAdd_ = can;
}

void FakeDeviceWallet::setPaymentPasses(std::vector<PaymentPass> passes) {
    std::lock_guard lock(mutex_);
    passes_ = std::move(passes);
}

void FakeDeviceWallet::refuseNextDialog() {
    std::lock_guard lock(mutex_);
    refuseNext_ = true;
}

std::optional<AddPaymentPassConfiguration> FakeDeviceWallet::openDialog() const {
    std::lock_guard lock(mutex_);
    return openConfiguration_;
}

std::vector<PaymentPass> FakeDeviceWallet::presentedPasses() const {
    std::lock_guard lock(mutex_);
    return presented_;
}

std::optional<AddPaymentPassRequest> FakeDeviceWallet::requestPass(AddPaymentPassChallenge challenge) {
    std::shared_ptr<AddPaymentPassDelegate> delegate;
    auto answer = std::make_shared<Answer>();
    {
        std::lock_guard lock(mutex_);
        delegate = delegate_;
        answer_ = answer;
    }
    if (!delegate) return std::nullopt;
    // The delegate may answer later, from another thread; the answer lands in `answer_`.
    delegate->generateRequest(std::move(challenge), [answer](AddPaymentPassRequest request) {
        std::lock_guard lock(answer->mutex);
        answer->request = std::move(request);
    });
    return lastRequest();
}

std::optional<AddPaymentPassRequest> FakeDeviceWallet::lastRequest() const {
    std::shared_ptr<Answer> answer;
    {
        std::lock_guard lock(mutex_);
        answer = answer_;
    }
    std::lock_guard lock(answer->mutex);
    return answer->request;
}

void FakeDeviceWallet::finishAdding(std::optional<PaymentPass> pass, std::optional<DeviceWalletError> error) {
    std::shared_ptr<AddPaymentPassDelegate> delegate;
    {
        std::lock_guard lock(mutex_);
        delegate = std::exchange(delegate_, nullptr);
        openConfiguration_.reset();
        if (pass && !error) passes_.push_back(*pass);
    }
    if (delegate) delegate->didFinishAdding(std::move(pass), std::move(error));
}

}  // namespace platform
