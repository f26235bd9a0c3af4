// The balance view model against the sandbox on real threads: a real main queue driven by the
// test thread, the calls started on one pool and the sandbox's waits on another. Nothing here
// measures time; the watchdog only turns a hang into a failure.

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include "ToviUI/BalanceViewModel.hpp"
#include "platform/Console.hpp"
#include "platform/Locale.hpp"
#include "platform/MainQueue.hpp"
#include "platform/ThreadPool.hpp"
#include "platform/testing/ScopedLocale.hpp"
#include "sandbox/SandboxToviClient.hpp"

namespace tovi::sandbox {
namespace {

using namespace std::chrono_literals;
using Kind = SandboxEvent::Kind;

class SandboxWalletThreads : public ::testing::Test {
protected:
    void SetUp() override { platform::setMainQueue(queue); }
    void TearDown() override { platform::setMainQueue(nullptr); }

    std::shared_ptr<BalanceViewModel> make() {
        return BalanceViewModel::create(client, client->customerId(), client->merchantId(),
                                        {.callExecutor = &calls, .paymentMethodUpdates = &updates});
    }

    // Drives the main queue until the screen state leaves `loading` once more.
    BalanceScreenUiState runUntilSettled(BalanceViewModel& viewModel) {
        bool replay = true;  // the current value, delivered on subscription, does not count
        bool settled = false;
        auto watch = viewModel.balanceScreenUiState.publisher().sink([&](BalanceScreenUiState state) {
            if (std::exchange(replay, false) || settled || state == BalanceScreenUiState::loading) return;
            settled = true;
            queue->stop();
        });
        queue->postAfter(30s, [this] { queue->stop(); });
        queue->run();
        EXPECT_TRUE(settled) << "the watchdog stopped the queue";
        return *viewModel.balanceScreenUiState;
    }

    platform::ScopedLocale locale{"en_US", "UTC"};
    std::shared_ptr<platform::MainQueue> queue = std::make_shared<platform::MainQueue>();
    // Timers before calls, so that the calls pool is joined first: a call may deliver its
    // result (for example a cancellation) before it has returned, and the rest of it still
    // schedules on the timers.
    platform::ThreadPool timers{2, "sb-timers"};
    platform::ThreadPool calls{2, "sb-calls"};
    PaymentMethodUpdateManager updates;
    std::shared_ptr<SandboxToviClient> client =
        SandboxToviClient::create({.seed = SandboxSeed::standard(), .timers = &timers, .vault = nullptr});
    platform::ConsoleCapture console;
};

TEST_F(SandboxWalletThreads, LoadsAndAppliesAChange) {
    client->setLatencyForAll(2ms);
    auto viewModel = make();
    ASSERT_EQ(runUntilSettled(*viewModel), BalanceScreenUiState::loaded);
    EXPECT_EQ(*viewModel->walletBalanceDisplayString, "$42.75");
    EXPECT_EQ(viewModel->transactions->size(), SandboxSeed::standard().transactions.size());

    viewModel->addFunds(ReloadAmountCustom{10.0}, viewModel->paymentMethodUiModels->front());
    ASSERT_EQ(runUntilSettled(*viewModel), BalanceScreenUiState::loaded) << "the refetch after the add";
    EXPECT_EQ(*viewModel->walletBalanceDisplayString, "$52.75");
    EXPECT_EQ(viewModel->transactions->front().transactionText, "Wallet reload");
    EXPECT_EQ(console.lines(), std::vector<std::string>{"added funds, closing sheet and refetching data!!!"});
}

TEST_F(SandboxWalletThreads, AFailureCancelsTheSlowCallsAndWaitsForThemBeforeTheError) {
    client->setLatency(SandboxOperation::getTransactions, std::chrono::hours(1));
    client->setLatency(SandboxOperation::getCardArtUrls, std::chrono::hours(1));
    client->failNext(SandboxOperation::getMerchant, "Store closed.");
    auto viewModel = make();
    std::vector<SandboxEvent> eventsAtError;
    auto watch = viewModel->balanceScreenUiState.publisher().sink([&](BalanceScreenUiState state) {
        if (state == BalanceScreenUiState::error) eventsAtError = client->events();
    });

    ASSERT_EQ(runUntilSettled(*viewModel), BalanceScreenUiState::error);
    const auto ended =
        std::ranges::count_if(eventsAtError, [](const SandboxEvent& e) { return e.kind != Kind::started; });
    EXPECT_EQ(ended, 6) << "every call had ended when the error was published";
    for (auto operation : {SandboxOperation::getTransactions, SandboxOperation::getCardArtUrls}) {
        EXPECT_NE(std::ranges::find(eventsAtError, SandboxEvent{operation, Kind::failed}), eventsAtError.end())
            << operationName(operation) << " was cancelled rather than waited for";
    }
    ASSERT_EQ(console.lines().size(), 1u);
    EXPECT_NE(console.lines()[0].find("getMerchant"), std::string::npos) << console.lines()[0];
}

}  // namespace
}  // namespace tovi::sandbox
