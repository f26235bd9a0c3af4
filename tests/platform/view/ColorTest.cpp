#include <gtest/gtest.h>

#include "platform/view/Color.hpp"

namespace platform::view {
namespace {

Color rgb255(int r, int g, int b, double a = 1) {
    return {r / 255.0, g / 255.0, b / 255.0, a};
}

TEST(ColorHex, ReadsTextAsTheDesignSystemDoes) {
    struct Case {
        const char* text;
        double opacity;
        Color expected;
        const char* why;
    };
    const Case cases[] = {
        {"#346ECE", 1, rgb255(0x34, 0x6E, 0xCE), "plain"},
        {"346ece", 0.5, rgb255(0x34, 0x6E, 0xCE, 0.5), "no hash, lower case, opacity kept"},
        {"  #F2A4AA\n", 1, rgb255(0xF2, 0xA4, 0xAA), "surrounding symbols and spaces trimmed"},
        {"\u2026#FF0000\u00A0", 1, rgb255(0xFF, 0, 0), "non-ASCII symbols trimmed too"},
        {"FFF", 1, rgb255(0, 0x0F, 0xFF), "three digits are a small number, not a shorthand"},
        {"80FF0000", 1, rgb255(0xFF, 0, 0), "eight digits: the low six count"},
        {"0x1F", 1, rgb255(0, 0, 0x1F), "the scanner takes a 0x prefix"},
        {"12 34", 1, rgb255(0, 0, 0x12), "scanning stops at the first non-digit"},
        {"FFFFFFFFFFFFFFFFFFFF", 1, rgb255(0xFF, 0xFF, 0xFF), "overflow saturates"},
        {"zebra", 0.3, Color{0, 0, 0, 0.3}, "no number: black at the given opacity"},
        {"", 1, Color::black(), "empty"},
        {"#", 1, Color::black(), "only a hash"},
        {"\u00C9A0", 1, Color::black(), "a leading letter outside ASCII is kept and stops the scan"},
    };
    for (const Case& c : cases) EXPECT_EQ(Color::hex(c.text, c.opacity), c.expected) << c.why;
}

TEST(ColorHex, IllFormedUtf8IsTrimmedAsASymbol) {
    EXPECT_EQ(Color::hex("\xFF#00FF00\xC3"), rgb255(0, 0xFF, 0));
}

}  // namespace
}  // namespace platform::view
