#pragma once
// Font: size, weight, design and optional family, as text styles carry them.

#include <cstdint>
#include <string>
#include <utility>

namespace platform::view {

enum class FontWeight : std::uint16_t {
    ultraLight = 100,
    thin = 200,
    light = 300,
    regular = 400,
    medium = 500,
    semibold = 600,
    bold = 700,
    heavy = 800,
    black = 900,
};

enum class FontDesign : std::uint8_t { standard, rounded, serif, monospaced };

struct Font {
    double size = 17;
    FontWeight weight = FontWeight::regular;
    FontDesign design = FontDesign::standard;
    // Empty for the platform's system font.
    std::string family{};

    [[nodiscard]] static Font system(double size, FontWeight weight = FontWeight::regular,
                                     FontDesign design = FontDesign::standard) {
        return {size, weight, design, {}};
    }
    [[nodiscard]] static Font custom(std::string family, double size, FontWeight weight = FontWeight::regular) {
        return {size, weight, FontDesign::standard, std::move(family)};
    }
    // The platform's text styles at the default content size.
    [[nodiscard]] static Font headline() { return system(17, FontWeight::semibold); }
    [[nodiscard]] static Font body() { return system(17); }
    [[nodiscard]] static Font caption() { return system(12); }

    friend bool operator==(const Font&, const Font&) = default;
};

}  // namespace platform::view
