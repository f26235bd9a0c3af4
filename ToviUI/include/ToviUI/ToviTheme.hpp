#pragma once
// ToviTheme: how a host brands the wallet, once, before showing it.
//
// `set` always rewrites the ten brand tokens and all fonts: an absent argument resets them to
// the defaults, so calling it with nothing undoes an earlier branding. The brand tokens are
// brand.primary/secondary, buttons.primary, icons.primary and promo, background.switchEnabled,
// background.switchDisabled (0.18), background.promoIcon (0.1), borders.branded (0.1),
// background.item (0.03) and text.link (the secondary colour); no other colour can be changed.
//
// Thread safety: main thread only, like ToviDesignSystem.

#include <optional>
#include <string>

#include "ToviUI/ToviColorScheme.hpp"
#include "ToviUI/ToviFonts.hpp"

namespace tovi {

struct ToviTheme {
    static void set(std::optional<BrandColors> brandColors = std::nullopt,
                    std::optional<ToviFonts> fonts = std::nullopt);

    // The bundle that holds the wallet's image assets.
    static constexpr const char* bundle = "ToviUI";
};

}  // namespace tovi
