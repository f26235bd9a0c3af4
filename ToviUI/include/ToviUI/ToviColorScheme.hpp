#pragma once
// ToviColorScheme: the wallet's palette, one group per role. The member initialisers are the
// defaults; the field order within each group is the declared one and is kept on purpose.

#include <optional>

#include "platform/view/Color.hpp"

namespace tovi {

using platform::view::Color;

// The two brand colours; an absent argument takes its default, so both are always present.
struct BrandColors {
    Color primary;
    Color secondary;

    explicit BrandColors(std::optional<Color> primary = std::nullopt, std::optional<Color> secondary = std::nullopt);
    friend bool operator==(const BrandColors&, const BrandColors&) = default;
};

struct BackgroundColors {
    Color light = Color::hex("#F7F8FA");
    Color medium = Color::hex("#E7ECF1");
    Color primary = Color::white();
    Color scrim = Color::black().opacity(0.8);
    Color alert = Color::hex("#FDF3E9");
    Color item = Color::hex("#346ECE", 0.03);
    Color promoIcon = Color::hex("#346ECE", 0.1);
    Color errorIcon = Color::hex("#F2A4AA");
    Color switchDisabled = Color::hex("#346ECE", 0.18);
    Color switchEnabled = Color::hex("#05B384");
    friend bool operator==(const BackgroundColors&, const BackgroundColors&) = default;
};

struct BorderColors {
    Color generic = Color::hex("#919BAB", 0.3);
    Color alert = Color::hex("#FBE0CC", 0.5);
    Color promo = Color::hex("#919BAB", 0.15);
    Color branded = Color::hex("#346ECE", 0.1);
    friend bool operator==(const BorderColors&, const BorderColors&) = default;
};

struct ButtonColors {
    Color primary = Color::hex("#346ECE");
    Color secondary = Color::hex("#E7ECF1");
    Color dark = Color::hex("#181822");
    Color disabled = Color::hex("#E7ECF1");
    friend bool operator==(const ButtonColors&, const ButtonColors&) = default;
};

struct IconColors {
    Color primary = Color::hex("#346ECE");
    Color promo = Color::hex("#346ECE");
    Color generic = Color::hex("#A6B3CB");
    Color alert = Color::hex("#F4B26F");
    Color success = Color::hex("#097958");
    Color error = Color::hex("#D33643");
    friend bool operator==(const IconColors&, const IconColors&) = default;
};

// No colours yet: the balance screen's gradient uses `brand.primary`.
struct GradientColors {
    friend bool operator==(const GradientColors&, const GradientColors&) = default;
};

struct TextColors {
    Color link = Color::hex("#271C6A");
    Color disabled = Color::hex("#E7ECF1");
    Color placeholder = Color::hex("#A6B3CB");
    Color secondary = Color::hex("#758498");
    Color primary = Color::hex("#445565");
    Color error = Color::hex("#D33643");
    Color bold = Color::hex("#181822");
    Color button = Color::white();
    Color positiveTransaction = Color::hex("#05B384");
    friend bool operator==(const TextColors&, const TextColors&) = default;
};

struct ToviColorScheme {
    BrandColors brand{};
    BackgroundColors background{};
    BorderColors borders{};
    ButtonColors buttons{};
    IconColors icons{};
    GradientColors gradient{};
    TextColors text{};
    friend bool operator==(const ToviColorScheme&, const ToviColorScheme&) = default;
};

}  // namespace tovi
