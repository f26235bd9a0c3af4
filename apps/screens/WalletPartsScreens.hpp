#pragma once
// Screens of the wallet's parts on the sandbox wallet: the transaction history, the card
// picker (a card added from its add row is published on the environment's channel and becomes
// the selection), and the about tap to pay row with its sheet.

#include "SandboxEnvironment.hpp"
#include "platform/view/Scope.hpp"

namespace tovi::screens {

[[nodiscard]] platform::view::Body historyScreen(SandboxEnvironment& environment);
[[nodiscard]] platform::view::Body paymentPickerScreen(SandboxEnvironment& environment);
[[nodiscard]] platform::view::Body aboutTapToPayScreen(SandboxEnvironment& environment);

}  // namespace tovi::screens
