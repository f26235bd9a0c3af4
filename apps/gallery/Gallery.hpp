#pragma once
// The preview gallery: every shared component of the wallet in its states (enabled, disabled,
// loading, pressed; bonus and alert bubbles pointing up and down; headers with and without
// actions; the error view; the navigation bar, the flip wrapper and every image asset), once
// under the default theme and once under a custom brand theme, side by side on one HTML page.
//
// Thread safety: main thread only. It sets the process-wide theme while it builds and restores
// the default theme before it returns.

#include <string>

#include "ToviUI/CustomCurrencyInput.hpp"
#include "platform/view/Node.hpp"

namespace tovi::gallery {

[[nodiscard]] std::string renderGalleryHtml();

// One column: every component in its states under the theme in force.
[[nodiscard]] platform::view::Node galleryColumn(const std::string& title);

// A brand far from the default, and a serif face, so that every token that follows the theme
// visibly changes and every one that must not stays put.
void setCustomBrandTheme();

// A custom amount range for previews: $5.00 to $100.00, with bonuses of $1.00 from $10.00 and
// $3.00 from $20.00.
[[nodiscard]] CustomCurrencyInputUiModel sampleCurrencyRange();

}  // namespace tovi::gallery
