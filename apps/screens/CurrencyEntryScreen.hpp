#pragma once
// Both amount entry fields as a screen: the custom amount row (dollars, typed freely, with the
// range message and bonus hint of a sample range) and the till-style cents field, each with the
// value it has bound shown beneath it.

#include "SandboxEnvironment.hpp"
#include "platform/view/Scope.hpp"

namespace tovi::screens {

[[nodiscard]] platform::view::Body currencyEntryScreen(SandboxEnvironment& environment);

}  // namespace tovi::screens
