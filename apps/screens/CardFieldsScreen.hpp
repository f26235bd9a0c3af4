#pragma once
// The secure card fields as a screen: number, expiry and code elements (the code follows the
// number's brand), what the host may know of them (brand, flags, bin and last four), and a
// "Tokenize" button that sends them to the sandbox vault and shows the token id or the error.
// The host side never reads a value: it sees element events and metadata, as a phone host does.

#include "SandboxEnvironment.hpp"
#include "platform/view/Scope.hpp"

namespace tovi::screens {

[[nodiscard]] platform::view::Body cardFieldsScreen(SandboxEnvironment& environment);

}  // namespace tovi::screens
