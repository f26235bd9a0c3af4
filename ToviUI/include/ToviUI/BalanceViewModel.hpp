#pragma once
// The one stateful object of the wallet screen.
//
// Loads everything the screen and its sheets show in one parallel fetch, turns the client's
// records into display models, and carries out the three wallet changes (add funds, update
// auto reload, add a payment method). Each published property notifies before it changes.
//
// Usage:
//   auto viewModel = BalanceViewModel::create(client, customerId, merchantId);  // starts a load
//   viewModel->balanceScreenUiState.publisher().sink(...);
//
// Lifetime: creation subscribes to the payment method channel with a strong reference that is
// never cancelled, so a view model lives at least as long as its channel (for the shared
// channel: the process). That is deliberate; a test passes its own channel to end it.
//
// Thread safety: create, call and observe on the main queue only. The six load calls start on
// a background executor; every completion comes back to the main queue, so no lock is used.

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ToviUI/AlertViewUiModel.hpp"
#include "ToviUI/AutoReloadUiModel.hpp"
#include "ToviUI/BalanceScreenState.hpp"
#include "ToviUI/PaymentMethodUiModel.hpp"
#include "ToviUI/PaymentMethodUpdateManager.hpp"
#include "ToviUI/ReloadBucketUiModel.hpp"
#include "ToviUI/ReloadConfigurationUiModel.hpp"
#include "ToviUI/TapToPayUiModel.hpp"
#include "ToviUI/ToviClient.hpp"
#include "ToviUI/TransactionUiModel.hpp"
#include "platform/Cancellable.hpp"
#include "platform/Executor.hpp"
#include "platform/ObservableObject.hpp"
#include "platform/Published.hpp"

namespace tovi {

struct BalanceViewModelOptions {
    // Where the load calls are started; the background pool when null.
    platform::Executor* callExecutor = nullptr;
    // The queue this object lives on, where every completion returns; the shared main queue
    // when null. A host that serves several screens from one thread passes a queue per screen.
    std::shared_ptr<platform::Executor> mainQueue = nullptr;
    // The channel of newly added payment methods; the shared one when null.
    PaymentMethodUpdateManager* paymentMethodUpdates = nullptr;
};

class BalanceViewModel final : public platform::ObservableObject,
                               public std::enable_shared_from_this<BalanceViewModel> {
public:
    using Done = std::move_only_function<void()>;

    using Options = BalanceViewModelOptions;

    // Publishes `loading`, then starts the first load on a later turn of the main queue.
    [[nodiscard]] static std::shared_ptr<BalanceViewModel> create(std::shared_ptr<ToviClient> toviClient,
                                                                  std::string customerId, std::string merchantId,
                                                                  Options options = {});

    BalanceViewModel(const BalanceViewModel&) = delete;
    BalanceViewModel& operator=(const BalanceViewModel&) = delete;

    // Published state, in declaration order.
    platform::Published<BalanceScreenUiState> balanceScreenUiState{*this, BalanceScreenUiState::loading,
                                                                   "balanceScreenUiState"};
    platform::Published<std::string> walletBalanceDisplayString{*this, "$0.00", "walletBalanceDisplayString"};
    platform::Published<std::optional<AlertViewUiModel>> alertViewUiModel{*this, std::nullopt,
                                                                          "alertViewUiModel"};  // no source yet
    platform::Published<bool> isDemoMode{*this, false, "isDemoMode"};
    platform::Published<std::optional<ReloadConfigurationUiModel>> appReloadConfigurationUiModel{
        *this, std::nullopt, "appReloadConfigurationUiModel"};
    platform::Published<std::optional<ReloadConfigurationUiModel>> userReloadConfigurationUiModel{
        *this, std::nullopt, "userReloadConfigurationUiModel"};
    platform::Published<AutoReloadUiModel> autoReloadUiModel{*this, AutoReloadDisabled{.reloadThreshold = 0},
                                                             "autoReloadUiModel"};
    platform::Published<std::optional<TapToPayUiModel>> tapToPayUiModel{*this, std::nullopt, "tapToPayUiModel"};
    platform::Published<std::vector<PaymentMethodUiModel>> paymentMethodUiModels{*this, {}, "paymentMethodUiModels"};
    platform::Published<std::vector<TransactionUiModel>> transactions{*this, {}, "transactions"};
    platform::Published<std::optional<std::string>> cardArtUrl{*this, std::nullopt, "cardArtUrl"};
    platform::Published<std::string> korvaneApiKey{*this, "", "korvaneApiKey"};
    platform::Published<bool> showAddFundsSheet{*this, false, "showAddFundsSheet"};
    platform::Published<bool> showAutoReloadScreen{*this, false, "showAutoReloadScreen"};
    platform::Published<std::optional<BalanceScreenState>> screenState{*this, std::nullopt, "screenState"};

    [[nodiscard]] const std::string& customerId() const { return customerId_; }
    [[nodiscard]] const std::string& merchantId() const { return merchantId_; }

    // Loads customer, transactions, merchant, reload configuration, vault key and card art in
    // parallel, awaits them in a fixed order (customer, merchant, reload configuration,
    // transactions, card art, vault key) and at the first failure in that order cancels the
    // rest and waits for them before publishing `error`. On success publishes `screenState`
    // and then the display models, `loaded` last. Does not publish `loading` itself.
    // Overlapping loads are neither merged nor cancelled: the last to finish wins.
    // `done` runs on the main queue once everything of this load has been published.
    void fetchBalanceData(Done done = {});

    // Sends the chosen amount (a typed amount truncated to cents) to the chosen card. On success
    // closes the sheet and refetches; on failure only logs. `done` runs when the call returns.
    // An amount beyond 32 bits is a fatal stop.
    void addFunds(const ReloadAmountSelection& selection, const PaymentMethodUiModel& paymentMethod, Done done = {});

    // Stores the auto reload state. On success closes the sheet and refetches; on failure only
    // logs. An amount beyond 32 bits is a fatal stop.
    void updateAutoReload(const AutoReloadUpdateInfo& info, Done done = {});

    // Adds the vault token as a card. On success the new record is published on the payment
    // method channel before `completion` hears of it; on failure the error is logged and passed on.
    void addPaymentMethod(std::string tokenId, ToviCompletion<ToviSharedPaymentMethod> completion);

    // Forwarded to the client unchanged, completion on the main queue.
    void createVirtualCard(ToviCompletion<ToviSharedVirtualCard> completion);
    void provisionVirtualCard(std::string virtualCardId, ToviSharedWalletProvider walletProvider,
                              ToviCompletion<ToviSharedProvisioning> completion);

private:
    struct Load;

    BalanceViewModel(std::shared_ptr<ToviClient> client, std::string customerId, std::string merchantId,
                     Options options);

    void handleNewPaymentMethod(const ToviSharedPaymentMethod& record);
    void apply(const BalanceScreenState& state);
    void refetchLater();
    [[nodiscard]] ToviCall mainCall() const { return ToviCall{*mainQueue_}; }

    const std::shared_ptr<ToviClient> toviClient_;
    const std::string customerId_;
    const std::string merchantId_;
    // Captured at creation, so that completions return to the queue this object lives on.
    const std::shared_ptr<platform::Executor> mainQueue_;
    platform::Executor& callExecutor_;
    PaymentMethodUpdateManager& paymentMethodUpdates_;
    platform::CancellableSet cancellables_;
};

}  // namespace tovi
