#pragma once
// The shared state behind a sandbox client and its two managers.
//
// Thread safety: every member may be called from any thread; one mutex guards the state, and
// completions are posted to the caller's queue outside it.

#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "ToviUI/ToviClient.hpp"
#include "platform/Executor.hpp"
#include "sandbox/SandboxCardVault.hpp"
#include "sandbox/SandboxSeed.hpp"
#include "sandbox/SandboxToviClient.hpp"

namespace tovi::sandbox::internal {

class SandboxBackend : public std::enable_shared_from_this<SandboxBackend> {
public:
    SandboxBackend(SandboxSeed seed, platform::Executor& timers, std::shared_ptr<SandboxCardVault> vault);

    // Scripting and inspection, as on the client.
    void setLatency(SandboxOperation operation, std::chrono::milliseconds latency);
    void setLatencyForAll(std::chrono::milliseconds latency);
    void setFailure(SandboxOperation operation, std::string message, int times);  // times < 0: always
    void clearFailures(SandboxOperation operation);
    void clearAllFailures();
    ToviSharedCustomer customerSnapshot() const;
    std::vector<ToviSharedTransaction> transactionsSnapshot() const;
    ToviSharedMerchant merchantSnapshot() const;
    std::vector<SandboxEvent> events() const;
    void clearEvents();

    // The operations.
    void getCustomer(std::string customerId, ToviCall call, ToviCompletion<ToviSharedCustomer> completion);
    void getReloadConfig(std::string customerId, ToviCall call,
                         ToviCompletion<ToviSharedUserReloadConfiguration> completion);
    void getTransactions(std::string customerId, ToviCall call, ToviCompletion<ToviSharedTransactionResult> completion);
    void addBalance(ToviSharedAddBalanceRequest request, ToviCall call,
                    ToviCompletion<ToviSharedBalanceUpdate> completion);
    void addPaymentMethod(std::string customerId, AddPaymentMethodType type, ToviCall call,
                          ToviCompletion<ToviSharedPaymentMethod> completion);
    void createVirtualCard(std::string customerId, ToviCall call, ToviCompletion<ToviSharedVirtualCard> completion);
    void provisionVirtualCard(ToviSharedProvisioningRequest request, ToviCall call,
                              ToviCompletion<ToviSharedProvisioning> completion);
    void setAutoReloadConfiguration(ToviSharedAutoReloadConfigurationRequest request, ToviCall call,
                                    ToviCompletion<ToviSharedAutoReloadConfiguration> completion);
    void getMerchant(std::string merchantId, ToviCall call, ToviCompletion<ToviSharedMerchant> completion);
    void getCardArtUrls(ToviCall call, ToviCompletion<std::vector<std::string>> completion);
    void getKorvaneApiKey(std::string merchantId, ToviCall call, ToviCompletion<std::string> completion);

private:
    template <class T>
    using Work = std::move_only_function<void(ToviCompletion<T>)>;

    struct Failure {
        std::string message;
        int remaining = 0;  // < 0: always
    };

    // Runs `work` after the operation's latency, unless a scripted failure or a cancellation
    // decides the result first; the result is posted to `call.queue` exactly once.
    template <class T>
    void run(SandboxOperation operation, ToviCall call, ToviCompletion<T> completion, Work<T> work);

    template <class T>
    void runNow(SandboxOperation operation, ToviCall call, ToviCompletion<T> completion,
                std::move_only_function<ToviResult<T>()> work);

    void record(SandboxOperation operation, SandboxEvent::Kind kind);
    std::string newId(std::string_view prefix);                                      // REQUIRES: mutex_ held
    std::string randomBytes(std::size_t count);                                      // REQUIRES: mutex_ held
    std::optional<ToviApiError> checkCustomer(const std::string& customerId) const;  // REQUIRES: mutex_ held
    ToviSharedPaymentMethod saveCard(ToviSharedCard card);

    platform::Executor& timers_;
    const std::shared_ptr<SandboxCardVault> vault_;

    mutable std::mutex mutex_;
    SandboxSeed state_;
    std::set<std::string> virtualCardIds_;
    std::array<std::chrono::milliseconds, kSandboxOperationCount> latency_{};
    std::array<std::optional<Failure>, kSandboxOperationCount> failures_{};
    std::vector<SandboxEvent> events_;
    std::mt19937_64 random_;
};

}  // namespace tovi::sandbox::internal
