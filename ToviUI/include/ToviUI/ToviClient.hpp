#pragma once
// The wallet backend as the screens see it.
//
// A host hands the wallet one `ToviClient`; every fetch and every change of the wallet goes
// through the two managers it exposes. Operations are asynchronous: each takes a `ToviCall`
// (completion executor and cancellation token) and a completion with a two-way result, and
// never throws. An operation returns at once, without waiting for the backend: the balance
// screen starts its six load calls one after another from one background task, so a call that
// blocked its caller would serialise them.
//
// Thread safety: implementations accept concurrent calls from any thread. The load of the
// balance screen starts six of them at once from background threads.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ToviUI/AddPaymentMethodType.hpp"
#include "ToviUI/ToviCall.hpp"
#include "ToviUI/ToviSharedRecords.hpp"
#include "ToviUI/ToviSharedRequests.hpp"

namespace tovi {

class CustomerManager {
public:
    virtual ~CustomerManager() = default;

    virtual void get(std::string customerId, ToviCall call, ToviCompletion<ToviSharedCustomer> completion) = 0;
    virtual void getReloadConfig(std::string customerId, ToviCall call,
                                 ToviCompletion<ToviSharedUserReloadConfiguration> completion) = 0;
    // The screens always pass an absent cursor and show only the first page.
    virtual void getTransactions(std::string customerId, std::optional<std::string> cursor, ToviCall call,
                                 ToviCompletion<ToviSharedTransactionResult> completion) = 0;
    virtual void addBalance(ToviSharedAddBalanceRequest request, ToviCall call,
                            ToviCompletion<ToviSharedBalanceUpdate> completion) = 0;
    virtual void addPaymentMethod(std::string customerId, AddPaymentMethodType paymentMethodType, ToviCall call,
                                  ToviCompletion<ToviSharedPaymentMethod> completion) = 0;
    virtual void createVirtualCard(std::string customerId, ToviCall call,
                                   ToviCompletion<ToviSharedVirtualCard> completion) = 0;
    virtual void provisionVirtualCard(ToviSharedProvisioningRequest request, ToviCall call,
                                      ToviCompletion<ToviSharedProvisioning> completion) = 0;
    virtual void setAutoReloadConfiguration(ToviSharedAutoReloadConfigurationRequest request, ToviCall call,
                                            ToviCompletion<ToviSharedAutoReloadConfiguration> completion) = 0;
};

class MerchantManager {
public:
    virtual ~MerchantManager() = default;

    virtual void get(std::string merchantId, ToviCall call, ToviCompletion<ToviSharedMerchant> completion) = 0;
    // The screens use the first element only; an empty array is a valid answer.
    virtual void getCardArtUrls(ToviCall call, ToviCompletion<std::vector<std::string>> completion) = 0;
    // The public key of the card vault.
    virtual void getKorvaneApiKey(std::string merchantId, ToviCall call, ToviCompletion<std::string> completion) = 0;
};

class ToviClient {
public:
    virtual ~ToviClient() = default;

    // True for a client that works against a sandbox; read once, when the view model is made.
    [[nodiscard]] virtual bool isSandboxMode() const = 0;

    // Asked anew for every call; callers do not cache them. The manager stays usable for as
    // long as the client lives.
    [[nodiscard]] virtual std::shared_ptr<CustomerManager> customer() = 0;
    [[nodiscard]] virtual std::shared_ptr<MerchantManager> merchant() = 0;
};

}  // namespace tovi
