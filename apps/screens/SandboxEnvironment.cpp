#include "SandboxEnvironment.hpp"

namespace tovi::screens {

SandboxEnvironment::SandboxEnvironment(platform::Executor& timers, platform::Executor& callExecutor,
                                       std::shared_ptr<sandbox::SandboxVaultServer> vault)
    : vault_(vault ? std::move(vault) : std::make_shared<sandbox::SandboxVaultServer>()),
      wallet_(sandbox::SandboxToviClient::create(sandbox::SandboxOptions{.timers = &timers, .vault = vault_})),
      callExecutor_(callExecutor) {}

SandboxEnvironment::~SandboxEnvironment() = default;

}  // namespace tovi::screens
