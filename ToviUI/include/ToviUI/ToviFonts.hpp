#pragma once
// ToviFonts: the wallet's text styles. Defaults are the system font in the default design.

#include "platform/view/Font.hpp"

namespace tovi {

using platform::view::Font;
using platform::view::FontWeight;

struct TitleFonts {
    Font large = Font::system(48, FontWeight::bold);
    Font medium = Font::system(20, FontWeight::semibold);
    Font smallSemiBold = Font::system(18, FontWeight::semibold);
    Font smallMedium = Font::system(18, FontWeight::medium);
    Font mini = Font::system(14, FontWeight::medium);
    friend bool operator==(const TitleFonts&, const TitleFonts&) = default;
};

struct BodyFonts {
    Font bold = Font::system(16, FontWeight::bold);
    Font semibold = Font::system(16, FontWeight::semibold);
    Font medium = Font::system(16, FontWeight::medium);
    friend bool operator==(const BodyFonts&, const BodyFonts&) = default;
};

struct ToviFonts {
    TitleFonts title{};
    BodyFonts body{};
    Font subhead = Font::system(14, FontWeight::medium);
    Font footnote = Font::system(13, FontWeight::medium);
    friend bool operator==(const ToviFonts&, const ToviFonts&) = default;
};

}  // namespace tovi
