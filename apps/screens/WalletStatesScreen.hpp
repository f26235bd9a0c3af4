#pragma once
// The wallet's load as a screen: the balance view model's loading, error and loaded states on
// the sandbox wallet. The error view's retry publishes loading and fetches again; the loaded
// state shows the balance with the counts of cards and transactions.

#include <functional>

#include "SandboxEnvironment.hpp"
#include "ToviUI/BalanceViewModel.hpp"
#include "platform/view/Scope.hpp"

namespace tovi::screens {

// A screen on the sandbox wallet's balance view model (made once per screen): the progress
// indicator while it loads, the error view with its retry when the load failed, and `loaded`
// once it has loaded. The view model hears of added cards on `updates`, the environment's
// channel when null.
[[nodiscard]] platform::view::Node walletScreen(platform::view::Scope& s, SandboxEnvironment& environment,
                                                const std::function<platform::view::Node(BalanceViewModel&)>& loaded,
                                                PaymentMethodUpdateManager* updates = nullptr);

[[nodiscard]] platform::view::Body walletStatesScreen(SandboxEnvironment& environment);

}  // namespace tovi::screens
