#pragma once
// The screens a host outside a phone can show: the demo server lists them on its home page and
// the scenario runner starts them by name. Each is one row; a new screen adds one line to the
// table in ScreenCatalogue.cpp.

#include <span>
#include <string_view>

#include "SandboxEnvironment.hpp"
#include "platform/view/Scope.hpp"

namespace tovi::screens {

struct ScreenEntry {
    std::string_view name;   // for URLs and scenario files: "walletStates"
    std::string_view title;  // for people: "Wallet load: loading, error, loaded"
    // The root body of the screen, running on `environment` (which outlives the body).
    platform::view::Body (*make)(SandboxEnvironment& environment);
};

[[nodiscard]] std::span<const ScreenEntry> screenCatalogue();
// Null when no screen has that name.
[[nodiscard]] const ScreenEntry* findScreen(std::string_view name);

}  // namespace tovi::screens
