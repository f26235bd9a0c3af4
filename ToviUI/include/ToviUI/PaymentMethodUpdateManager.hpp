#pragma once
// The channel from the add card flow to the open picker and to the balance view model.
//
// A card saved in one sheet is published here once; whoever listens at that moment (the
// picker selects it, the view model shows it first and refetches) hears it. Nothing is
// replayed to later subscribers.
//
// Thread safety: none; use it on the main queue only.

#include "ToviUI/ToviSharedRecords.hpp"
#include "platform/PassthroughSubject.hpp"
#include "platform/Publisher.hpp"

namespace tovi {

class PaymentMethodUpdateManager {
public:
    // The process-wide instance. Tests may make their own to keep subscribers apart.
    [[nodiscard]] static PaymentMethodUpdateManager& shared();

    PaymentMethodUpdateManager() = default;
    PaymentMethodUpdateManager(const PaymentMethodUpdateManager&) = delete;
    PaymentMethodUpdateManager& operator=(const PaymentMethodUpdateManager&) = delete;

    [[nodiscard]] platform::Publisher<ToviSharedPaymentMethod> newPaymentObserver() const {
        return subject_.publisher();
    }

    void onPaymentMethodAdded(const ToviSharedPaymentMethod& paymentMethod) { subject_.send(paymentMethod); }

private:
    platform::PassthroughSubject<ToviSharedPaymentMethod> subject_;
};

}  // namespace tovi
