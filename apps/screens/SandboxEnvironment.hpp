#pragma once
// SandboxEnvironment: what a hosted screen runs on outside a phone: the sandbox wallet, the
// sandbox card vault on loopback, and a payment method channel of its own, so that two
// sessions (two browser tabs, two scenario runs) never see each other's changes.
//
// The screens' view models live on `mainQueue` (the wallet's latencies wait there too) and
// start their calls on `callExecutor`. A scenario passes its manual main queue for both, so that
// time is virtual and every run is the same; the demo passes a queue of the tab's own, which
// applies the tab's settings around every task.
//
// Creating an environment points the element library (a process-wide setting) at its vault.
//
// Thread safety: create, use and destroy on the main queue's thread.

#include <memory>
#include <string>

#include "ToviUI/PaymentMethodUpdateManager.hpp"
#include "platform/Executor.hpp"
#include "sandbox/SandboxToviClient.hpp"
#include "sandbox/SandboxVaultServer.hpp"

namespace tovi::screens {

class SandboxEnvironment {
public:
    // REQUIRES: `callExecutor` outlives the environment. Without a `vault`, the environment
    // starts one of its own; a server hosting many sessions shares one.
    SandboxEnvironment(std::shared_ptr<platform::Executor> mainQueue, platform::Executor& callExecutor,
                       std::shared_ptr<sandbox::SandboxVaultServer> vault = nullptr);
    ~SandboxEnvironment();
    SandboxEnvironment(const SandboxEnvironment&) = delete;
    SandboxEnvironment& operator=(const SandboxEnvironment&) = delete;

    [[nodiscard]] const std::shared_ptr<sandbox::SandboxToviClient>& wallet() const { return wallet_; }
    [[nodiscard]] sandbox::SandboxVaultServer& vault() const { return *vault_; }
    // The key the screens send to the vault.
    [[nodiscard]] const std::string& vaultApiKey() const { return vaultApiKey_; }
    [[nodiscard]] PaymentMethodUpdateManager& paymentMethods() { return paymentMethods_; }
    [[nodiscard]] platform::Executor& callExecutor() const { return callExecutor_; }
    [[nodiscard]] const std::shared_ptr<platform::Executor>& mainQueue() const { return mainQueue_; }

private:
    std::shared_ptr<platform::Executor> mainQueue_;
    std::shared_ptr<sandbox::SandboxVaultServer> vault_;
    std::shared_ptr<sandbox::SandboxToviClient> wallet_;
    PaymentMethodUpdateManager paymentMethods_;
    platform::Executor& callExecutor_;
    std::string vaultApiKey_ = sandbox::SandboxVaultServer::kDefaultApiKey;
};

}  // namespace tovi::screens
