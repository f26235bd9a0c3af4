#pragma once
// Screens made of the shared components alone: the component gallery's column (every component
// in its states, under the theme in force) and the error view, whose retry is counted.

#include "SandboxEnvironment.hpp"
#include "platform/view/Scope.hpp"

namespace tovi::screens {

[[nodiscard]] platform::view::Body componentsScreen(SandboxEnvironment& environment);
[[nodiscard]] platform::view::Body errorViewScreen(SandboxEnvironment& environment);

}  // namespace tovi::screens
