#pragma once
// The wallet's load as a screen: the balance view model's loading, error and loaded states on
// the sandbox wallet. The error view's retry publishes loading and fetches again; the loaded
// state shows the balance with the counts of cards and transactions.

#include "SandboxEnvironment.hpp"
#include "platform/view/Scope.hpp"

namespace tovi::screens {

[[nodiscard]] platform::view::Body walletStatesScreen(SandboxEnvironment& environment);

}  // namespace tovi::screens
