#pragma once
// Color: an sRGB colour with opacity, components in 0...1.

#include <string_view>

namespace platform::view {

struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    [[nodiscard]] static constexpr Color rgb(double r, double g, double b, double a = 1) { return {r, g, b, a}; }
    [[nodiscard]] static constexpr Color white() { return {1, 1, 1, 1}; }
    [[nodiscard]] static constexpr Color black() { return {0, 0, 0, 1}; }
    [[nodiscard]] static constexpr Color clear() { return {0, 0, 0, 0}; }

    // Colour from hexadecimal text, as the design system reads its palette:
    //  1. every character that is not a Unicode letter, mark or number is trimmed from both ends;
    //  2. a "#" that still leads is dropped;
    //  3. the rest is scanned as one hexadecimal number (an optional "0x" prefix, then digits up
    //     to the first character that is not one; too many digits saturate); nothing scanned
    //     is 0;
    //  4. bits 16-23 are red, 8-15 green, 0-7 blue; higher bits are ignored.
    // Never fails: text that is no number gives black at `opacity`. "FFF" is the number 0xFFF,
    // not a shorthand.
    [[nodiscard]] static Color hex(std::string_view text, double opacity = 1.0);

    // The same colour with its opacity multiplied by `factor`.
    [[nodiscard]] constexpr Color opacity(double factor) const { return {red, green, blue, alpha * factor}; }

    friend bool operator==(const Color&, const Color&) = default;
};

}  // namespace platform::view
