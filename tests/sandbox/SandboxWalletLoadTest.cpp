// The balance view model against the sandbox, on virtual time.

#include <gtest/gtest.h>

#include "ToviUI/BalanceViewModel.hpp"
#include "platform/Console.hpp"
#include "platform/Locale.hpp"
#include "platform/testing/ManualMainQueue.hpp"
#include "platform/testing/ScopedLocale.hpp"
#include "sandbox/SandboxToviClient.hpp"

namespace tovi::sandbox {
namespace {

using namespace std::chrono_literals;

class SandboxWalletLoad : public ::testing::Test {
protected:
    std::shared_ptr<BalanceViewModel> make() {
        return BalanceViewModel::create(client, client->customerId(), client->merchantId(),
                                        {.callExecutor = &main.queue(), .paymentMethodUpdates = &updates});
    }

    platform::ScopedLocale locale{"en_US", "UTC"};
    platform::ManualMainQueueScope main;
    PaymentMethodUpdateManager updates;
    std::shared_ptr<SandboxToviClient> client =
        SandboxToviClient::create({.seed = SandboxSeed::standard(), .timers = &main.queue(), .vault = nullptr});
    platform::ConsoleCapture console;
};

TEST_F(SandboxWalletLoad, TheSixCallsRunInParallel) {
    client->setLatencyForAll(100ms);
    auto viewModel = make();
    main->runUntilIdle();
    const auto started = client->events();
    ASSERT_EQ(started.size(), 6u);
    for (const auto& event : started) EXPECT_EQ(event.kind, SandboxEvent::Kind::started);

    main->advance(100ms);  // one latency, not six
    EXPECT_EQ(*viewModel->balanceScreenUiState, BalanceScreenUiState::loaded);
    EXPECT_TRUE(*viewModel->isDemoMode);
    EXPECT_EQ(*viewModel->walletBalanceDisplayString, "$42.75");
    EXPECT_EQ(viewModel->paymentMethodUiModels->size(), 2u);
}

TEST_F(SandboxWalletLoad, AFailedCallShowsTheErrorWithTheSandboxMessage) {
    client->failNext(SandboxOperation::getCardArtUrls, "Card art is unavailable.");
    auto viewModel = make();
    main->runUntilIdle();
    EXPECT_EQ(*viewModel->balanceScreenUiState, BalanceScreenUiState::error);
    ASSERT_EQ(console.lines().size(), 1u);
    EXPECT_NE(console.lines()[0].find("scripted failure of getCardArtUrls"), std::string::npos);

    viewModel->fetchBalanceData();  // the failure was for one call only
    main->runUntilIdle();
    EXPECT_EQ(*viewModel->balanceScreenUiState, BalanceScreenUiState::loaded);
}

}  // namespace
}  // namespace tovi::sandbox
