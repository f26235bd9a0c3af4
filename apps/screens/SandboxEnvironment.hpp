#pragma once
// SandboxEnvironment: what a hosted screen runs on outside a phone: the sandbox wallet, the
// sandbox card vault on loopback, and a payment method channel of its own, so that two
// sessions (two browser tabs, two scenario runs) never see each other's changes.
//
// The wallet's latencies wait on `timers` and the view models start their calls on
// `callExecutor`; a scenario passes its manual main queue for both, so that time is virtual and
// every run is the same.
//
// Thread safety: create, use and destroy on the main queue's thread.

#include <memory>

#include "ToviUI/PaymentMethodUpdateManager.hpp"
#include "platform/Executor.hpp"
#include "sandbox/SandboxToviClient.hpp"
#include "sandbox/SandboxVaultServer.hpp"

namespace tovi::screens {

class SandboxEnvironment {
public:
    // REQUIRES: `timers` and `callExecutor` outlive the environment. Without a `vault`, the
    // environment starts one of its own; a server hosting many sessions shares one.
    SandboxEnvironment(platform::Executor& timers, platform::Executor& callExecutor,
                       std::shared_ptr<sandbox::SandboxVaultServer> vault = nullptr);
    ~SandboxEnvironment();
    SandboxEnvironment(const SandboxEnvironment&) = delete;
    SandboxEnvironment& operator=(const SandboxEnvironment&) = delete;

    [[nodiscard]] const std::shared_ptr<sandbox::SandboxToviClient>& wallet() const { return wallet_; }
    [[nodiscard]] sandbox::SandboxVaultServer& vault() const { return *vault_; }
    [[nodiscard]] PaymentMethodUpdateManager& paymentMethods() { return paymentMethods_; }
    [[nodiscard]] platform::Executor& callExecutor() const { return callExecutor_; }

private:
    std::shared_ptr<sandbox::SandboxVaultServer> vault_;
    std::shared_ptr<sandbox::SandboxToviClient> wallet_;
    PaymentMethodUpdateManager paymentMethods_;
    platform::Executor& callExecutor_;
};

}  // namespace tovi::screens
