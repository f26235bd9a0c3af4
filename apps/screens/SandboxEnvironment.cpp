#include "SandboxEnvironment.hpp"

#include "KorvaneElements/KorvaneElements.hpp"

namespace tovi::screens {

SandboxEnvironment::SandboxEnvironment(std::shared_ptr<platform::Executor> mainQueue, platform::Executor& callExecutor,
                                       std::shared_ptr<sandbox::SandboxVaultServer> vault)
    : mainQueue_(std::move(mainQueue)),
      vault_(vault ? std::move(vault) : std::make_shared<sandbox::SandboxVaultServer>()),
      wallet_(sandbox::SandboxToviClient::create(sandbox::SandboxOptions{.timers = mainQueue_.get(), .vault = vault_})),
      callExecutor_(callExecutor) {
    korvane::elements::KorvaneElements::setBasePath(vault_->baseUrl());
}

SandboxEnvironment::~SandboxEnvironment() = default;

}  // namespace tovi::screens
