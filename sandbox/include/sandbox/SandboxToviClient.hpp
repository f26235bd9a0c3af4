#pragma once
// An in-process wallet backend that a host can run against from day one.
//
// It starts from a `SandboxSeed` and its changes are real: adding balance raises the balance
// and records credit transactions, the auto reload state is stored, added cards appear on the
// customer, virtual cards and provisioning data are made up plausibly. Every operation can be
// given a latency and a failure, so that tests and demos can show each path.
//
// Usage:
//   auto client = tovi::sandbox::SandboxToviClient::create();
//   client->setLatencyForAll(std::chrono::milliseconds(300));
//   client->failNext(SandboxOperation::addBalance, "Your card was declined.");
//   auto viewModel = tovi::BalanceViewModel::create(client, client->customerId(), client->merchantId());
//
// Latency never blocks the caller: the wait runs on a timer executor (the background pool
// unless another is given) and the completion is then posted to the call's queue. A call
// cancelled while it waits completes at once with a cancellation error and changes nothing.
//
// Thread safety: every member may be called from any thread, concurrently.

#include <atomic>
#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ToviUI/ToviClient.hpp"
#include "platform/Executor.hpp"
#include "sandbox/SandboxCardVault.hpp"
#include "sandbox/SandboxSeed.hpp"

namespace tovi::sandbox {

enum class SandboxOperation {
    getCustomer,
    getReloadConfig,
    getTransactions,
    addBalance,
    addPaymentMethod,
    createVirtualCard,
    provisionVirtualCard,
    setAutoReloadConfiguration,
    getMerchant,
    getCardArtUrls,
    getKorvaneApiKey,
};
inline constexpr std::size_t kSandboxOperationCount = 11;

[[nodiscard]] std::string_view operationName(SandboxOperation operation);
// The operation of that name, for hosts that script the sandbox from text; absent for others.
[[nodiscard]] std::optional<SandboxOperation> operationNamed(std::string_view name);

// One line of the sandbox's call log.
struct SandboxEvent {
    enum class Kind { started, succeeded, failed };
    SandboxOperation operation;
    Kind kind;

    friend bool operator==(const SandboxEvent&, const SandboxEvent&) = default;
};

namespace internal {
class SandboxBackend;
}

struct SandboxOptions {
    SandboxSeed seed = SandboxSeed::standard();
    // Runs the latency waits; the background pool when null. Must outlive the client and every
    // call still in progress: a call can deliver its result before it has returned.
    platform::Executor* timers = nullptr;
    // Where added cards are looked up; without one, cards are made up from the token id.
    std::shared_ptr<SandboxCardVault> vault;
};

class SandboxToviClient final : public ToviClient {
public:
    using Options = SandboxOptions;

    [[nodiscard]] static std::shared_ptr<SandboxToviClient> create(Options options = {});

    // True unless switched off, so that a demo can show the wallet as a live host would.
    [[nodiscard]] bool isSandboxMode() const override { return sandboxMode_.load(); }
    void setSandboxMode(bool on) { sandboxMode_.store(on); }
    [[nodiscard]] std::shared_ptr<CustomerManager> customer() override;
    [[nodiscard]] std::shared_ptr<MerchantManager> merchant() override;

    [[nodiscard]] const std::string& customerId() const { return customerId_; }
    [[nodiscard]] const std::string& merchantId() const { return merchantId_; }

    // Scripting. Each applies to calls that start afterwards.
    void setLatency(SandboxOperation operation, std::chrono::milliseconds latency);
    void setLatencyForAll(std::chrono::milliseconds latency);
    // The next `times` calls of `operation` fail with `humanReadableMessage`.
    void failNext(SandboxOperation operation, std::string humanReadableMessage, int times = 1);
    // Every call of `operation` fails until `clearFailures`.
    void failAlways(SandboxOperation operation, std::string humanReadableMessage);
    void clearFailures(SandboxOperation operation);
    void clearAllFailures();

    // Inspection.
    [[nodiscard]] ToviSharedCustomer customerSnapshot() const;
    [[nodiscard]] std::vector<ToviSharedTransaction> transactionsSnapshot() const;
    [[nodiscard]] ToviSharedMerchant merchantSnapshot() const;
    // Starts (when a call arrives) and ends (when its result is posted), in order.
    [[nodiscard]] std::vector<SandboxEvent> events() const;
    void clearEvents();

private:
    explicit SandboxToviClient(std::shared_ptr<internal::SandboxBackend> backend, std::string customerId,
                               std::string merchantId);

    std::shared_ptr<internal::SandboxBackend> backend_;
    std::string customerId_;
    std::string merchantId_;
    std::atomic<bool> sandboxMode_{true};
};

}  // namespace tovi::sandbox
