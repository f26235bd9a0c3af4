#include "ToviUI/BalanceViewModel.hpp"

#include <algorithm>
#include <utility>
#include <variant>

#include "ToviUI/CurrencyFormat.hpp"
#include "platform/Console.hpp"
#include "platform/DeviceWallet.hpp"
#include "platform/MainQueue.hpp"
#include "platform/ThreadPool.hpp"

namespace tovi {

namespace {

template <class... F>
struct Overloaded : F... {
    using F::operator()...;
};

enum class Awaited { pending, succeeded, failed };

// One step of the fixed await order: has the slot's call ended, and how.
template <class T>
Awaited awaitSlot(const std::optional<ToviResult<T>>& slot, std::optional<ToviApiError>& failure) {
    if (!slot) return Awaited::pending;
    if (slot->has_value()) return Awaited::succeeded;
    failure = slot->error();
    return Awaited::failed;
}

}  // namespace

// The state of one `fetchBalanceData`. Lives on the main queue: the calls are started on the
// call executor, but every completion (and so every field here) is touched on the main queue.
struct BalanceViewModel::Load {
    static constexpr int kCalls = 6;

    std::shared_ptr<BalanceViewModel> owner;
    Done done;
    CancellationToken cancellation;

    std::optional<ToviResult<ToviSharedCustomer>> customer;
    std::optional<ToviResult<ToviSharedTransactionResult>> transactions;
    std::optional<ToviResult<ToviSharedMerchant>> merchant;
    std::optional<ToviResult<ToviSharedUserReloadConfiguration>> reloadConfig;
    std::optional<ToviResult<std::string>> korvaneApiKey;
    std::optional<ToviResult<std::vector<std::string>>> cardArtUrls;

    int ended = 0;
    std::optional<ToviApiError> failure;  // the first failure in await order, once reached
    bool finished = false;

    template <class T>
    ToviCompletion<T> slot(std::optional<ToviResult<T>> Load::*field, const std::shared_ptr<Load>& self) {
        return [self, field](ToviResult<T> result) {
            (*self).*field = std::move(result);
            ++self->ended;
            self->advance();
        };
    }

    // Walks the await order as far as the results allow. A failure cancels the calls not yet
    // awaited, and is reported only once every call has ended.
    void advance() {
        if (finished) return;
        if (!failure) {
            // Lazily, in await order: a slot is looked at only once every slot before it succeeded.
            Awaited step = Awaited::succeeded;
            auto next = [&](const auto& slot) {
                if (step == Awaited::succeeded) step = awaitSlot(slot, failure);
            };
            next(customer);
            next(merchant);
            next(reloadConfig);
            next(transactions);
            next(cardArtUrls);
            next(korvaneApiKey);
            if (step == Awaited::pending) return;
            if (step == Awaited::succeeded) return succeed();
            cancellation.cancel();
        }
        if (ended < kCalls) return;
        finished = true;
        platform::consoleLine("Error fetching user info on balance page: " + failure->localizedDescription());
        owner->balanceScreenUiState = BalanceScreenUiState::error;
        if (done) done();
    }

    void succeed() {
        finished = true;
        const auto& urls = cardArtUrls->value();
        owner->screenState = BalanceScreenState{
            .customer = customer->value(),
            .merchant = merchant->value(),
            .customerReloadConfig = reloadConfig->value(),
            .transactions = transactions->value(),
            .cardArtUrl = urls.empty() ? std::nullopt : std::optional<std::string>(urls.front()),
            .korvaneApiKey = korvaneApiKey->value(),
        };
        if (auto state = owner->screenState.get()) owner->apply(*state);
        if (done) done();
    }
};

std::shared_ptr<BalanceViewModel> BalanceViewModel::create(std::shared_ptr<ToviClient> toviClient,
                                                           std::string customerId, std::string merchantId,
                                                           Options options) {
    std::shared_ptr<BalanceViewModel> viewModel(
        new BalanceViewModel(std::move(toviClient), std::move(customerId), std::move(merchantId), options));
    viewModel->isDemoMode = viewModel->toviClient_->isSandboxMode();
    // Strong on purpose: the channel keeps the view model alive past its screen.
    viewModel->paymentMethodUpdates_.newPaymentObserver()
        .sink([viewModel](const ToviSharedPaymentMethod& record) { viewModel->handleNewPaymentMethod(record); })
        .store(viewModel->cancellables_);
    viewModel->balanceScreenUiState = BalanceScreenUiState::loading;
    viewModel->refetchLater();
    return viewModel;
}

BalanceViewModel::BalanceViewModel(std::shared_ptr<ToviClient> client, std::string customerId, std::string merchantId,
                                   Options options)
    : toviClient_(std::move(client)),
      customerId_(std::move(customerId)),
      merchantId_(std::move(merchantId)),
      mainQueue_(options.mainQueue ? options.mainQueue : platform::sharedMainQueue()),
      callExecutor_(options.callExecutor != nullptr ? *options.callExecutor : platform::backgroundPool()),
      paymentMethodUpdates_(options.paymentMethodUpdates != nullptr ? *options.paymentMethodUpdates
                                                                    : PaymentMethodUpdateManager::shared()) {}

void BalanceViewModel::fetchBalanceData(Done done) {
    auto load = std::make_shared<Load>();
    load->owner = shared_from_this();
    load->done = std::move(done);

    // The completions are made here, so that the last reference to the load (and through it to
    // this object) is always dropped on the main queue.
    auto onCustomer = load->slot(&Load::customer, load);
    auto onTransactions = load->slot(&Load::transactions, load);
    auto onMerchant = load->slot(&Load::merchant, load);
    auto onReloadConfig = load->slot(&Load::reloadConfig, load);
    auto onApiKey = load->slot(&Load::korvaneApiKey, load);
    auto onCardArt = load->slot(&Load::cardArtUrls, load);

    callExecutor_.post([client = toviClient_, customerId = customerId_, merchantId = merchantId_, queue = mainQueue_,
                        cancellation = load->cancellation, onCustomer = std::move(onCustomer),
                        onTransactions = std::move(onTransactions), onMerchant = std::move(onMerchant),
                        onReloadConfig = std::move(onReloadConfig), onApiKey = std::move(onApiKey),
                        onCardArt = std::move(onCardArt)]() mutable {
        const ToviCall call{*queue, cancellation};
        client->customer()->get(customerId, call, std::move(onCustomer));
        client->customer()->getTransactions(customerId, std::nullopt, call, std::move(onTransactions));
        client->merchant()->get(merchantId, call, std::move(onMerchant));
        client->customer()->getReloadConfig(customerId, call, std::move(onReloadConfig));
        client->merchant()->getKorvaneApiKey(merchantId, call, std::move(onApiKey));
        client->merchant()->getCardArtUrls(call, std::move(onCardArt));
    });
}

void BalanceViewModel::apply(const BalanceScreenState& state) {
    const auto& limits = state.merchant.metadata.autoReloadConfiguration;
    walletBalanceDisplayString = formatCurrencyAmount(centsToDollars(state.customer.balance.amount));
    appReloadConfigurationUiModel = makeAppReloadConfiguration(state.merchant);
    userReloadConfigurationUiModel = makeUserReloadConfiguration(state.customerReloadConfig, state.merchant);

    std::vector<PaymentMethodUiModel> methods;
    methods.reserve(state.customer.paymentMethods.size());
    for (const auto& record : state.customer.paymentMethods) methods.push_back(makePaymentMethodUiModel(record));
    paymentMethodUiModels = std::move(methods);

    autoReloadUiModel = makeAutoReloadUiModel(state.customer.autoReloadConfig, limits.minimumAutoReloadThreshold);
    transactions = makeTransactionUiModels(state.transactions);
    cardArtUrl = state.cardArtUrl;
    korvaneApiKey = state.korvaneApiKey;
    if (platform::deviceWallet()->canAddPaymentPass()) {
        tapToPayUiModel = TapToPayUiModel(state.merchant.name);
    } else {
        tapToPayUiModel = std::nullopt;
    }
    balanceScreenUiState = BalanceScreenUiState::loaded;
}

void BalanceViewModel::refetchLater() {
    mainQueue_->post([self = shared_from_this()] { self->fetchBalanceData(); });
}

void BalanceViewModel::addFunds(const ReloadAmountSelection& selection, const PaymentMethodUiModel& paymentMethod,
                                Done done) {
    const std::int64_t cents =
        std::visit(Overloaded{[](const ReloadAmountPreconfigured& preset) { return preset.bucket.reloadAmount; },
                              [](const ReloadAmountCustom& custom) { return dollarsToCents(custom.dollars); }},
                   selection);
    ToviSharedAddBalanceRequest request{
        .customerId = customerId_,
        .amount = centsToInt32(cents),
        .toviPaymentMethodId = paymentMethod.id,
        .label = std::nullopt,
        .metadata = std::nullopt,
    };
    toviClient_->customer()->addBalance(
        std::move(request), mainCall(),
        [self = shared_from_this(), done = std::move(done)](ToviResult<ToviSharedBalanceUpdate> result) mutable {
            if (result) {
                platform::consoleLine("added funds, closing sheet and refetching data!!!");
                self->refetchLater();
                self->showAddFundsSheet = false;
            } else {
                platform::consoleLine("failed to add funds, need to shower an error!");
            }
            if (done) done();
        });
}

void BalanceViewModel::updateAutoReload(const AutoReloadUpdateInfo& info, Done done) {
    ToviSharedAutoReloadConfigurationStatus status =
        std::visit(Overloaded{[](const AutoReloadUpdateDisabled&) -> ToviSharedAutoReloadConfigurationStatus {
                                  return ToviSharedAutoReloadConfigurationStatusDisabled::disabled();
                              },
                              [](const AutoReloadUpdateEnabled& enabled) -> ToviSharedAutoReloadConfigurationStatus {
                                  return ToviSharedAutoReloadConfigurationStatusEnabled{
                                      .paymentMethodId = enabled.paymentMethodId,
                                      .reloadAmount = centsToInt32(enabled.reloadAmount),
                                      .reloadThreshold = centsToInt32(enabled.reloadThreshold),
                                  };
                              }},
                   info);
    toviClient_->customer()->setAutoReloadConfiguration(
        ToviSharedAutoReloadConfigurationRequest{.customerId = customerId_, .status = std::move(status)}, mainCall(),
        [self = shared_from_this(),
         done = std::move(done)](ToviResult<ToviSharedAutoReloadConfiguration> result) mutable {
            if (result) {
                platform::consoleLine("updated auto reload, closing sheet!!!");
                self->refetchLater();
                self->showAutoReloadScreen = false;
            } else {
                platform::consoleLine("failed to update auto reload, need to shower an error!");
            }
            if (done) done();
        });
}

void BalanceViewModel::addPaymentMethod(std::string tokenId, ToviCompletion<ToviSharedPaymentMethod> completion) {
    toviClient_->customer()->addPaymentMethod(
        customerId_, creditCard(std::move(tokenId)), mainCall(),
        [self = shared_from_this(),
         completion = std::move(completion)](ToviResult<ToviSharedPaymentMethod> result) mutable {
            if (result) {
                // The channel first: the view model and an open picker know of the card before
                // the sheet hears of the result.
                self->paymentMethodUpdates_.onPaymentMethodAdded(*result);
            } else {
                platform::consoleLine("error adding payment method: " + result.error().rendering());
            }
            completion(std::move(result));
        });
}

void BalanceViewModel::createVirtualCard(ToviCompletion<ToviSharedVirtualCard> completion) {
    toviClient_->customer()->createVirtualCard(customerId_, mainCall(), std::move(completion));
}

void BalanceViewModel::provisionVirtualCard(std::string virtualCardId, ToviSharedWalletProvider walletProvider,
                                            ToviCompletion<ToviSharedProvisioning> completion) {
    toviClient_->customer()->provisionVirtualCard(
        ToviSharedProvisioningRequest{.customerId = customerId_,
                                      .virtualCardId = std::move(virtualCardId),
                                      .walletProvider = std::move(walletProvider)},
        mainCall(), std::move(completion));
}

void BalanceViewModel::handleNewPaymentMethod(const ToviSharedPaymentMethod& record) {
    auto model = makePaymentMethodUiModel(record);
    const auto& current = paymentMethodUiModels.get();
    const bool known = std::ranges::any_of(current, [&](const PaymentMethodUiModel& m) { return m.id == model.id; });
    if (!known) {
        auto updated = current;
        updated.insert(updated.begin(), std::move(model));
        paymentMethodUiModels = std::move(updated);
    }
    refetchLater();
}

}  // namespace tovi
