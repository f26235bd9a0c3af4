#include "ToviUI/BalanceViewModel.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ScriptedToviClient.hpp"
#include "platform/Console.hpp"
#include "platform/Locale.hpp"
#include "platform/testing/FakeDeviceWallet.hpp"
#include "platform/testing/ManualMainQueue.hpp"
#include "platform/testing/ScopedLocale.hpp"

namespace tovi {
namespace {

using testing::ScriptedToviClient;

const std::vector<std::string> kStartOrder{
    "customer.get",
    "customer.getTransactions",
    "merchant.get",
    "customer.getReloadConfig",
    "merchant.getKorvaneApiKey",
    "merchant.getCardArtUrls",
};

// The order the load awaits its calls in, which is not the order it starts them in.
const std::vector<std::string> kAwaitOrder{
    "customer.get",
    "merchant.get",
    "customer.getReloadConfig",
    "customer.getTransactions",
    "merchant.getCardArtUrls",
    "merchant.getKorvaneApiKey",
};

ToviApiError error(std::string message) {
    return ToviApiError{std::move(message), ""};
}

class BalanceViewModelTest : public ::testing::Test {
protected:
    void SetUp() override {
        client->customerRecord.balance.amount = 4275;
        client->customerRecord.paymentMethods = {{"pm_a", {"visa", "424242", "4242"}},
                                                 {"pm_b", {"Visa", "555555", "4444"}}};
        client->merchantRecord.name = "Driftwood Coffee";
        client->merchantRecord.metadata.autoReloadConfiguration = {500, 10000, 700};
        client->merchantRecord.metadata.appReloadConfiguration = {{{"p1", 1000}}, true};
        client->reloadConfig = {{{"p1", 1000, 0}, {"p2", 2500, 250}}, true};
        client->transactionsRecord.transactions = {{"t1", "Latte", "2024-01-10T08:05:00.000Z", -575, false}};
        platform::setDeviceWallet(wallet);
    }

    void TearDown() override {
        client->dropPending();
        platform::setDeviceWallet(nullptr);
    }

    std::shared_ptr<BalanceViewModel> make() {
        return BalanceViewModel::create(client, "cus_1", "mer_1",
                                        {.callExecutor = &background, .paymentMethodUpdates = &updates});
    }

    // A view model whose first load has ended.
    std::shared_ptr<BalanceViewModel> loaded() {
        auto viewModel = make();
        drain();
        return viewModel;
    }

    // Runs both queues until neither has work due.
    void drain() {
        while (background.runUntilIdle() + main->runUntilIdle() > 0) {
        }
    }

    std::vector<std::string> lines() const { return console.lines(); }

    platform::ScopedLocale locale{"en_US", "UTC"};
    platform::ManualMainQueueScope main;
    platform::ManualMainQueue background;
    PaymentMethodUpdateManager updates;
    std::shared_ptr<ScriptedToviClient> client = std::make_shared<ScriptedToviClient>();
    std::shared_ptr<platform::FakeDeviceWallet> wallet = std::make_shared<platform::FakeDeviceWallet>();
    platform::ConsoleCapture console;
};

TEST_F(BalanceViewModelTest, CreationPublishesLoadingAndStartsTheSixCallsOffTheMainQueueOnALaterTurn) {
    client->sandbox = true;
    auto viewModel = make();
    EXPECT_EQ(*viewModel->balanceScreenUiState, BalanceScreenUiState::loading);
    EXPECT_TRUE(*viewModel->isDemoMode);
    EXPECT_EQ(background.pendingCount(), 0u) << "creation returns before the load starts";
    main->runUntilIdle();  // the creation's task: hands the calls to the background executor
    EXPECT_TRUE(client->calls.empty());
    background.runUntilIdle();

    EXPECT_EQ(client->callNames(), kStartOrder);
    for (const auto& call : client->calls) EXPECT_FALSE(call.startedOnMainQueue) << call.name;
    EXPECT_EQ(*viewModel->balanceScreenUiState, BalanceScreenUiState::loading) << "no completion has run yet";
    drain();
    EXPECT_EQ(*viewModel->balanceScreenUiState, BalanceScreenUiState::loaded);
}

TEST_F(BalanceViewModelTest, SuccessPublishesEachApplyStepSeparatelyAndLoadedLast) {
    auto viewModel = make();
    std::vector<std::string> order;
    platform::CancellableSet subscriptions;
    auto watch = [&](auto& property, std::string name) {
        bool initial = true;  // a publisher replays the current value first
        property.publisher()
            .sink([&order, name, initial](const auto&) mutable {
                if (!std::exchange(initial, false)) order.push_back(name);
            })
            .store(subscriptions);
    };
    watch(viewModel->screenState, "screenState");
    watch(viewModel->walletBalanceDisplayString, "balance");
    watch(viewModel->appReloadConfigurationUiModel, "appReload");
    watch(viewModel->userReloadConfigurationUiModel, "userReload");
    watch(viewModel->paymentMethodUiModels, "paymentMethods");
    watch(viewModel->autoReloadUiModel, "autoReload");
    watch(viewModel->transactions, "transactions");
    watch(viewModel->cardArtUrl, "cardArt");
    watch(viewModel->korvaneApiKey, "apiKey");
    watch(viewModel->tapToPayUiModel, "tapToPay");
    watch(viewModel->balanceScreenUiState, "uiState");
    drain();

    EXPECT_EQ(order,
              (std::vector<std::string>{"screenState", "balance", "appReload", "userReload", "paymentMethods",
                                        "autoReload", "transactions", "cardArt", "apiKey", "tapToPay", "uiState"}));
    EXPECT_EQ(*viewModel->walletBalanceDisplayString, "$42.75");
    EXPECT_EQ(viewModel->paymentMethodUiModels->at(1).card.brand, CardBrand::unknown) << "brand match is exact";
    EXPECT_EQ(*viewModel->autoReloadUiModel, AutoReloadUiModel(AutoReloadDisabled{.reloadThreshold = 700}));
    EXPECT_EQ(viewModel->transactions->at(0).amount, "-$5.75");
    EXPECT_EQ(*viewModel->cardArtUrl, "https://cdn.example/art.png");
    EXPECT_EQ(*viewModel->korvaneApiKey, "key_test");
    EXPECT_FALSE(viewModel->tapToPayUiModel->has_value()) << "the device cannot add passes";
    EXPECT_EQ(viewModel->screenState->value().customer, client->customerRecord);
}

// A device that can add passes gets the tap-to-pay row; no card art is no failure.
TEST_F(BalanceViewModelTest, TapToPayFollowsTheDeviceWalletAndEmptyCardArtIsNotAFailure) {
    wallet->setCanAddPaymentPass(true);
    client->cardArtUrls.clear();
    auto viewModel = loaded();
    EXPECT_EQ(*viewModel->balanceScreenUiState, BalanceScreenUiState::loaded);
    EXPECT_FALSE(viewModel->cardArtUrl->has_value());
    ASSERT_TRUE(viewModel->tapToPayUiModel->has_value());
    EXPECT_EQ(viewModel->tapToPayUiModel->value().merchantName, "Driftwood Coffee");
}

// Every pair of failing calls, ended in reverse await order: the earlier one in await order is
// reported, and nothing is cancelled or reported before the customer, awaited first, has ended.
TEST_F(BalanceViewModelTest, TheFirstFailureInAwaitOrderWinsWhicheverEndsFirst) {
    auto viewModel = loaded();
    client->held = {kAwaitOrder.begin(), kAwaitOrder.end()};
    for (std::size_t first = 0; first < kAwaitOrder.size(); ++first) {
        for (std::size_t second = first + 1; second < kAwaitOrder.size(); ++second) {
            const std::string& winner = kAwaitOrder[first];
            SCOPED_TRACE(winner + " and " + kAwaitOrder[second] + " fail");
            client->errors = {{winner, error(winner)}, {kAwaitOrder[second], error(kAwaitOrder[second])}};
            console.clear();
            bool done = false;
            viewModel->fetchBalanceData([&] { done = true; });
            drain();
            for (auto name = kAwaitOrder.rbegin(); name != kAwaitOrder.rend(); ++name) {
                EXPECT_FALSE(done || client->lastCall(*name)->cancellation.isCancelled()) << "before " << *name;
                client->release(*name);
                drain();
            }
            EXPECT_TRUE(done);
            EXPECT_EQ(lines(), std::vector<std::string>{"Error fetching user info on balance page: The operation "
                                                        "couldn\u2019t be completed. (ToviApiError: " +
                                                        winner + ")"});
        }
    }
}

TEST_F(BalanceViewModelTest, FailedRefetchKeepsTheOldValuesButShowsTheError) {
    auto viewModel = loaded();
    const auto firstState = *viewModel->screenState;

    client->customerRecord.balance.amount = 1;
    client->errors["merchant.getKorvaneApiKey"] = error("key down");
    std::vector<BalanceScreenUiState> published;
    auto subscription = viewModel->balanceScreenUiState.publisher().sink(
        [&](BalanceScreenUiState state) { published.push_back(state); });
    published.clear();  // drop the replay of the current value
    bool done = false;
    viewModel->fetchBalanceData([&] { done = true; });
    drain();

    EXPECT_TRUE(done);
    EXPECT_EQ(published, std::vector<BalanceScreenUiState>{BalanceScreenUiState::error})
        << "a refetch runs behind the screen on display: no `loading` in between";
    EXPECT_EQ(*viewModel->balanceScreenUiState, BalanceScreenUiState::error);
    EXPECT_EQ(*viewModel->walletBalanceDisplayString, "$42.75");
    EXPECT_EQ(*viewModel->screenState, firstState);
}

TEST_F(BalanceViewModelTest, OverlappingFetchesLetTheLastToFinishWin) {
    auto viewModel = loaded();

    client->held = {"customer.get"};
    client->customerRecord.balance.amount = 1000;
    viewModel->fetchBalanceData();  // answers $10.00 but is held
    drain();
    client->held.clear();
    client->customerRecord.balance.amount = 2000;
    viewModel->fetchBalanceData();  // answers $20.00 at once
    drain();
    EXPECT_EQ(*viewModel->walletBalanceDisplayString, "$20.00");

    client->release("customer.get");
    drain();
    EXPECT_EQ(*viewModel->walletBalanceDisplayString, "$10.00");
}

TEST_F(BalanceViewModelTest, NewPaymentMethodGoesFirstUnlessItsIdIsKnownAndAlwaysRefetches) {
    auto viewModel = loaded();
    client->held = {"customer.get"};  // keep refetches from replacing the list

    updates.onPaymentMethodAdded({"pm_a", {"amex", "371449", "8431"}});
    EXPECT_EQ(viewModel->paymentMethodUiModels->size(), 2u);
    EXPECT_EQ(viewModel->paymentMethodUiModels->at(0).card.brand, CardBrand::visa) << "known id: list unchanged";

    updates.onPaymentMethodAdded({"pm_new", {"amex", "371449", "8431"}});
    ASSERT_EQ(viewModel->paymentMethodUiModels->size(), 3u);
    EXPECT_EQ(viewModel->paymentMethodUiModels->at(0),
              (PaymentMethodUiModel{"pm_new", {CardBrand::amex, "371449", "8431"}, false}));

    const auto before = client->calls.size();
    drain();
    EXPECT_EQ(client->calls.size(), before + 2 * kStartOrder.size()) << "one refetch per published method";
}

TEST_F(BalanceViewModelTest, ChangesCloseTheirSheetAndRefetchOnlyOnSuccessAndAlwaysCallDone) {
    using Start = std::function<void(BalanceViewModel&, BalanceViewModel::Done)>;
    struct Change {
        const char* call;
        platform::Published<bool> BalanceViewModel::*sheet;
        Start start;
        const char* succeeded;
        const char* failed;
    };
    const Change changes[] = {
        {"customer.addBalance", &BalanceViewModel::showAddFundsSheet,
         [](BalanceViewModel& vm, auto done) {
             vm.addFunds(ReloadAmountCustom{1.0}, {"pm_a", {}, false}, std::move(done));
         },
         "added funds, closing sheet and refetching data!!!", "failed to add funds, need to shower an error!"},
        {"customer.setAutoReloadConfiguration", &BalanceViewModel::showAutoReloadScreen,
         [](BalanceViewModel& vm, auto done) { vm.updateAutoReload(AutoReloadUpdateDisabled{}, std::move(done)); },
         "updated auto reload, closing sheet!!!", "failed to update auto reload, need to shower an error!"},
    };
    auto viewModel = loaded();
    for (const auto& change : changes) {
        for (const bool fails : {false, true}) {
            SCOPED_TRACE(std::string(change.call) + (fails ? " fails" : " succeeds"));
            client->errors.clear();
            if (fails) client->errors[change.call] = error("declined");
            (*viewModel).*change.sheet = true;
            console.clear();
            bool done = false;
            const auto before = client->calls.size();
            change.start(*viewModel, [&] { done = true; });
            drain();
            EXPECT_TRUE(done);
            EXPECT_EQ(*((*viewModel).*change.sheet), fails) << "the sheet stays open only after a failure";
            EXPECT_EQ(lines(), std::vector<std::string>{fails ? change.failed : change.succeeded});
            EXPECT_EQ(client->calls.size(), before + 1 + (fails ? 0 : kStartOrder.size())) << "the change, a refetch";
        }
    }
}

TEST_F(BalanceViewModelTest, ChangesSendTruncatedCentsAndTheChosenStatus) {
    auto viewModel = loaded();
    const PaymentMethodUiModel card{"pm_a", {CardBrand::visa, "424242", "4242"}, false};
    viewModel->addFunds(ReloadAmountCustom{1.15}, card);
    viewModel->addFunds(ReloadAmountPreconfigured{{"p1", 1000, std::nullopt}}, card);
    viewModel->updateAutoReload(AutoReloadUpdateEnabled{"pm_b", 2500, 1000});
    viewModel->updateAutoReload(AutoReloadUpdateDisabled{});
    drain();

    EXPECT_EQ(client->addBalanceRequests, (std::vector<ToviSharedAddBalanceRequest>{
                                              {"cus_1", 114, "pm_a", std::nullopt, std::nullopt},
                                              {"cus_1", 1000, "pm_a", std::nullopt, std::nullopt},
                                          }));
    EXPECT_EQ(client->autoReloadRequests,
              (std::vector<ToviSharedAutoReloadConfigurationRequest>{
                  {"cus_1", ToviSharedAutoReloadConfigurationStatusEnabled{"pm_b", 2500, 1000}},
                  {"cus_1", ToviSharedAutoReloadConfigurationStatusDisabled::disabled()},
              }));
}

TEST_F(BalanceViewModelTest, AddPaymentMethodPublishesOnTheChannelBeforeCompleting) {
    auto viewModel = loaded();
    std::vector<std::string> order;
    auto subscription = updates.newPaymentObserver().sink([&](const auto&) { order.push_back("channel"); });

    viewModel->addPaymentMethod("tok_123", [&](ToviResult<ToviSharedPaymentMethod> result) {
        order.push_back("completion");
        EXPECT_EQ(result.value().id, "pm_new");
        EXPECT_EQ(viewModel->paymentMethodUiModels->front().id, "pm_new") << "the handler ran first";
    });
    main->runUntilIdle();

    EXPECT_EQ(order, (std::vector<std::string>{"channel", "completion"}));
    EXPECT_EQ(client->addedTypes.at(0), creditCard("tok_123"));
}

TEST_F(BalanceViewModelTest, AddPaymentMethodFailureIsLoggedAndHandedBack) {
    auto viewModel = loaded();
    client->errors["customer.addPaymentMethod"] = ToviApiError{"Card refused", "402"};
    std::optional<ToviApiError> received;
    viewModel->addPaymentMethod("tok_9", [&](auto result) { received = result.error(); });
    drain();

    EXPECT_EQ(received, (ToviApiError{"Card refused", "402"}));
    EXPECT_EQ(lines(),
              std::vector<std::string>{
                  R"(error adding payment method: ToviApiError(humanReadableMessage: "Card refused", detail: "402"))"});
    EXPECT_EQ(viewModel->paymentMethodUiModels->size(), 2u);
}

TEST_F(BalanceViewModelTest, VirtualCardCallsAreForwardedUnchanged) {
    auto viewModel = loaded();
    client->errors["customer.createVirtualCard"] = error("no cards today");
    std::optional<ToviResult<ToviSharedVirtualCard>> created;
    std::optional<ToviResult<ToviSharedProvisioning>> provisioned;
    viewModel->createVirtualCard([&](auto result) { created = std::move(result); });
    const ToviSharedWalletProviderApplePay provider{"bm9uY2U=", "c2ln", "Y2VydA=="};
    viewModel->provisionVirtualCard("vc_1", provider, [&](auto result) { provisioned = std::move(result); });
    drain();

    EXPECT_EQ(created->error().humanReadableMessage, "no cards today");
    EXPECT_EQ(provisioned->value().encryptedData, "ZGF0YQ==");
    EXPECT_EQ(client->provisioningRequests, (std::vector<ToviSharedProvisioningRequest>{{"cus_1", "vc_1", provider}}));
    EXPECT_TRUE(lines().empty());
}

TEST_F(BalanceViewModelTest, ALocaleThatWritesAmountsDifferentlyChangesTheBalance) {
    platform::ScopedLocale german("de_DE", "Europe/Berlin");
    auto viewModel = loaded();
    EXPECT_EQ(*viewModel->walletBalanceDisplayString, "42,75\u00A0€");
}

using BalanceViewModelDeathTest = BalanceViewModelTest;

TEST_F(BalanceViewModelDeathTest, AmountsThatDoNotFitStopTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    auto viewModel = make();
    const PaymentMethodUiModel card{"pm_a", {}, false};
    EXPECT_DEATH(viewModel->addFunds(ReloadAmountCustom{21474837.0}, card),
                 "^Fatal error: Not enough bits to represent the passed value\n");
    EXPECT_DEATH(viewModel->addFunds(ReloadAmountPreconfigured{{"big", -2147483649LL, std::nullopt}}, card),
                 "Not enough bits to represent the passed value");
    EXPECT_DEATH(viewModel->addFunds(ReloadAmountCustom{1e300}, card),
                 "Fatal error: Double value cannot be converted to Int because the result would be greater than "
                 "Int.max");
    EXPECT_DEATH(viewModel->updateAutoReload(AutoReloadUpdateEnabled{"pm_a", 1LL << 31, 0}),
                 "Not enough bits to represent the passed value");
}

}  // namespace
}  // namespace tovi
