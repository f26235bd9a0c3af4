#include "ToviUI/ToviDesignSystem.hpp"

#include "ToviUI/ToviTheme.hpp"

namespace tovi {

BrandColors::BrandColors(std::optional<Color> primary, std::optional<Color> secondary)
    : primary(primary.value_or(Color::hex("#346ECE"))), secondary(secondary.value_or(Color::hex("#271C6A"))) {}

ToviDesignSystem& ToviDesignSystem::shared() {
    static ToviDesignSystem* instance = new ToviDesignSystem();  // lives for the process
    return *instance;
}

void ToviTheme::set(std::optional<BrandColors> brandColors, std::optional<ToviFonts> fonts) {
    const BrandColors brand = brandColors.value_or(BrandColors());
    const Color p = brand.primary;
    ToviColorScheme& c = ToviDesignSystem::shared().colors;
    c.brand = brand;
    c.buttons.primary = p;
    c.icons.primary = p;
    c.icons.promo = p;
    c.background.switchEnabled = p;
    c.background.switchDisabled = p.opacity(0.18);
    c.background.promoIcon = p.opacity(0.1);
    c.borders.branded = p.opacity(0.1);
    c.background.item = p.opacity(0.03);
    c.text.link = brand.secondary;
    ToviDesignSystem::shared().fonts = fonts.value_or(ToviFonts());
}

}  // namespace tovi
