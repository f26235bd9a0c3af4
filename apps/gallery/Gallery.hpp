#pragma once
// The preview gallery: every shared component of the wallet in its states (enabled, disabled,
// loading, pressed; bonus and alert bubbles pointing up and down; headers with and without
// actions; the error view; the navigation bar, the flip wrapper and every image asset), once
// under the default theme and once under a custom brand theme, side by side on one HTML page.
//
// Thread safety: main thread only. It sets the process-wide theme while it builds and restores
// the default theme before it returns.

#include <string>

namespace tovi::gallery {

[[nodiscard]] std::string renderGalleryHtml();

}  // namespace tovi::gallery
