// The wallet screen's load against the sandbox with 20 ms per call, on real threads: the six
// calls in parallel (as the view model runs them) against the same six one after another.
// The parallel load should take at most about 1.3 times one call's latency.

#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>

#include "ToviUI/BalanceViewModel.hpp"
#include "platform/Console.hpp"
#include "platform/MainQueue.hpp"
#include "sandbox/SandboxToviClient.hpp"

namespace {

using namespace std::chrono_literals;
using tovi::sandbox::SandboxToviClient;

constexpr auto kLatency = 20ms;

// Installs a real main queue that the benchmark thread drives, and a sandbox with latency.
struct WalletFixture {
    WalletFixture() : queue(std::make_shared<platform::MainQueue>()) {
        platform::setMainQueue(queue);
        client = SandboxToviClient::create();
        client->setLatencyForAll(kLatency);
    }
    ~WalletFixture() { platform::setMainQueue(nullptr); }

    std::shared_ptr<platform::MainQueue> queue;
    std::shared_ptr<SandboxToviClient> client;
    platform::ConsoleCapture quiet;  // keeps log lines out of the report
    // A channel of its own, destroyed first: it holds the view model, which would otherwise
    // outlive the run through the process-wide channel.
    tovi::PaymentMethodUpdateManager updates;
};

void BM_LoadBalance(benchmark::State& state) {
    WalletFixture fixture;
    auto viewModel =
        tovi::BalanceViewModel::create(fixture.client, fixture.client->customerId(), fixture.client->merchantId(),
                                       {.callExecutor = nullptr, .paymentMethodUpdates = &fixture.updates});
    auto watch = viewModel->balanceScreenUiState.publisher().sink([&](tovi::BalanceScreenUiState ui) {
        if (ui != tovi::BalanceScreenUiState::loading) fixture.queue->stop();
    });
    fixture.queue->run();  // the load that creation starts

    for (auto _ : state) {
        viewModel->fetchBalanceData();
        fixture.queue->run();  // until `loaded` (or `error`) is published
    }
    if (*viewModel->balanceScreenUiState != tovi::BalanceScreenUiState::loaded) state.SkipWithError("load failed");
    state.counters["latency_ms"] = static_cast<double>(kLatency.count());
}

void BM_LoadBalanceSerial(benchmark::State& state) {
    WalletFixture fixture;
    auto& queue = *fixture.queue;
    const auto customerId = fixture.client->customerId();
    const auto merchantId = fixture.client->merchantId();
    auto client = fixture.client;
    int failures = 0;
    auto check = [&](bool ok) { failures += ok ? 0 : 1; };

    for (auto _ : state) {
        const tovi::ToviCall call{queue};
        client->customer()->get(customerId, call, [&](auto customer) {
            check(customer.has_value());
            client->customer()->getTransactions(customerId, std::nullopt, call, [&](auto transactions) {
                check(transactions.has_value());
                client->merchant()->get(merchantId, call, [&](auto merchant) {
                    check(merchant.has_value());
                    client->customer()->getReloadConfig(customerId, call, [&](auto reload) {
                        check(reload.has_value());
                        client->merchant()->getKorvaneApiKey(merchantId, call, [&](auto key) {
                            check(key.has_value());
                            client->merchant()->getCardArtUrls(call, [&](auto art) {
                                check(art.has_value());
                                queue.stop();
                            });
                        });
                    });
                });
            });
        });
        queue.run();
    }
    if (failures > 0) state.SkipWithError("a call failed");
    state.counters["latency_ms"] = static_cast<double>(kLatency.count());
}

}  // namespace

BENCHMARK(BM_LoadBalance)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_LoadBalanceSerial)->Unit(benchmark::kMillisecond)->UseRealTime();
