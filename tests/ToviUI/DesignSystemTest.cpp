#include <gtest/gtest.h>

#include <set>
#include <string>

#include "ToviUI/ToviAssets.hpp"
#include "ToviUI/ToviDesignSystem.hpp"
#include "ToviUI/ToviImage.hpp"
#include "ToviUI/ToviImageSource.hpp"
#include "ToviUI/ToviTheme.hpp"
#include "platform/view/HtmlRenderer.hpp"
#include "platform/view/Inspect.hpp"
#include "platform/view/View.hpp"

namespace tovi {
namespace {

using namespace platform::view;

class ThemeTest : public ::testing::Test {
protected:
    void SetUp() override { ToviTheme::set(); }
    void TearDown() override { ToviTheme::set(); }
    ToviColorScheme& colors() { return ToviDesignSystem::shared().colors; }
};

Color hex(const char* text, double opacity = 1) {
    return Color::hex(text, opacity);
}

TEST_F(ThemeTest, BrandingWritesExactlyTheTenTokens) {
    const Color p = Color::hex("#FF5500");
    const Color s = Color::hex("#00AA55");
    ToviColorScheme expected;
    expected.brand = BrandColors(p, s);
    expected.buttons.primary = p;
    expected.icons.primary = p;
    expected.icons.promo = p;
    expected.background.switchEnabled = p;
    expected.background.switchDisabled = p.opacity(0.18);
    expected.background.promoIcon = p.opacity(0.1);
    expected.borders.branded = p.opacity(0.1);
    expected.background.item = p.opacity(0.03);
    expected.text.link = s;

    ToviTheme::set(BrandColors(p, s));
    EXPECT_EQ(colors(), expected) << "every other colour keeps its default";
}

TEST_F(ThemeTest, SetWithNothingRestoresEveryBrandedTokenAndFont) {
    ToviFonts custom;
    custom.title.large = Font::custom("Brand Serif", 44);
    custom.footnote = Font::custom("Brand Sans", 11);
    ToviTheme::set(BrandColors(Color::hex("#123456"), Color::hex("#654321")), custom);
    ASSERT_NE(colors(), ToviColorScheme{});
    ASSERT_EQ(ToviDesignSystem::shared().fonts, custom);

    // The reset writes the default brand into all ten tokens. One of them, switchEnabled, starts
    // as its own green and becomes the brand blue at the first set: the unbranded look.
    ToviColorScheme unbranded;
    unbranded.background.switchEnabled = Color::hex("#346ECE");
    ToviTheme::set();
    EXPECT_EQ(colors(), unbranded);
    EXPECT_EQ(ToviDesignSystem::shared().fonts, ToviFonts{});

    // Fonts alone reset the brand, and brand alone resets the fonts.
    ToviTheme::set(BrandColors(Color::hex("#123456")), std::nullopt);
    ToviTheme::set(std::nullopt, custom);
    EXPECT_EQ(colors(), unbranded);
    ToviTheme::set(BrandColors(Color::hex("#123456")));
    EXPECT_EQ(ToviDesignSystem::shared().fonts, ToviFonts{});
}

TEST_F(ThemeTest, AbsentSecondaryKeepsTheDefaultSecondary) {
    const Color x = hex("#AA0000");
    EXPECT_EQ(BrandColors(std::nullopt, x).primary, hex("#346ECE"));
    ToviTheme::set(BrandColors(x, std::nullopt));
    EXPECT_EQ(colors().buttons.primary, x);
    EXPECT_EQ(colors().text.link, hex("#271C6A"));
}

TEST(ImageSource, RawValuesAreExactAssetNames) {
    EXPECT_EQ(rawValue(ToviImageSource::autopay), "auto_pay");
    EXPECT_EQ(rawValue(ToviImageSource::location), "location");
    EXPECT_EQ(rawValue(ToviImageSource::applePay), "apple_pay");
    EXPECT_EQ(toviImageSource("master_card"), ToviImageSource::masterCard);
    EXPECT_EQ(toviImageSource("visa_electron"), ToviImageSource::visaElectron);
    for (const char* wrong : {"Visa", "visa ", "masterCard", "", "auto-pay"}) {
        EXPECT_EQ(toviImageSource(wrong), std::nullopt) << wrong;
    }
}

TEST(ImageSource, EveryCaseHasItsOwnDrawingInTheBundle) {
    std::set<std::string_view> seen;
    for (std::size_t i = 0; i < toviImageAssetNames.size(); ++i) {
        const auto source = static_cast<ToviImageSource>(i);
        EXPECT_EQ(toviImageSource(rawValue(source)), source);
        const auto svg = toviAssetSvg(rawValue(source));
        ASSERT_TRUE(svg.has_value()) << rawValue(source);
        EXPECT_TRUE(svg->starts_with("<svg")) << rawValue(source);
        EXPECT_NE(svg->find("viewBox=\""), std::string_view::npos) << rawValue(source);
        const auto openTag = svg->substr(0, svg->find('>'));
        EXPECT_EQ(openTag.find(" width="), std::string_view::npos) << "the renderer sizes assets: " << rawValue(source);
        EXPECT_TRUE(seen.insert(*svg).second) << "duplicate drawing: " << rawValue(source);
    }
    EXPECT_EQ(seen.size(), 24U);
    EXPECT_FALSE(toviAssetSvg("missing").has_value());
}

TEST(ToviImage, IsAResizableAssetOfTheWalletBundle) {
    auto image = inspect(ToviImage{ToviImageSource::backArrow, RenderingMode::templated});
    const auto& props = image.props<ImageProps>();
    EXPECT_EQ(props.source, (ImageSource{ImageSource::Type::asset, "back_arrow", ToviTheme::bundle}));
    EXPECT_TRUE(props.resizable);
    EXPECT_FALSE(props.contentMode.has_value()) << "stretched, not fitted";
    EXPECT_EQ(props.renderingMode, RenderingMode::templated);
    EXPECT_EQ(inspect(ToviImage{ToviImageSource::visa}).props<ImageProps>().renderingMode, RenderingMode::original);

    // Rendered through the wallet's options, the drawing is inlined; another bundle's is not.
    const std::string html = renderHtml(ToviImage{ToviImageSource::visa}, toviHtmlOptions());
    EXPECT_NE(html.find(">VI</text>"), std::string::npos);
    EXPECT_NE(renderHtml(AssetImage("visa", "Other"), toviHtmlOptions()).find("dashed"), std::string::npos);
}

}  // namespace
}  // namespace tovi
