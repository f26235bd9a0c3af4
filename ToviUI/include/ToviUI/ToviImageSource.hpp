#pragma once
// ToviImageSource: the wallet's image assets. A case's raw value is the asset's name in the
// module's bundle.

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tovi {

enum class ToviImageSource : std::uint8_t {
    autopay,
    wallet,
    sparkle,
    alert,
    close,
    check,
    error,
    backArrow,
    chevronRight,
    chevronLeft,
    plus,
    nfc,
    errorCard,
    placeholderCard,
    applePay,
    americanExpress,
    dinersClub,
    discover,
    maestro,
    masterCard,
    visaElectron,
    visa,
    toviCard,
    location,
};

inline constexpr std::array<std::string_view, 24> toviImageAssetNames = {
    "auto_pay",   "wallet",           "sparkle",      "alert",    "close",   "check",       "error",
    "back_arrow", "chevron_right",    "chevron_left", "plus",     "nfc",     "error_card",  "placeholder_card",
    "apple_pay",  "american_express", "diners_club",  "discover", "maestro", "master_card", "visa_electron",
    "visa",       "tovi_card",        "location",
};

[[nodiscard]] constexpr std::string_view rawValue(ToviImageSource source) {
    return toviImageAssetNames[static_cast<std::size_t>(source)];
}

// The case whose raw value is exactly `raw`, or absent.
[[nodiscard]] constexpr std::optional<ToviImageSource> toviImageSource(std::string_view raw) {
    for (std::size_t i = 0; i < toviImageAssetNames.size(); ++i) {
        if (toviImageAssetNames[i] == raw) return static_cast<ToviImageSource>(i);
    }
    return std::nullopt;
}

}  // namespace tovi
