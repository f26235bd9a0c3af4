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

// Structured bindings follow declaration order, so these catch a reordered field as well as a
// wrong default.
TEST(DesignSystemDefaults, ColoursInDeclaredOrder) {
    using Colors = std::vector<Color>;
    const auto [link, disabled, placeholder, secondary, primary, error, bold, button, positive] = TextColors{};
    EXPECT_EQ((Colors{link, disabled, placeholder, secondary, primary, error, bold, button, positive}),
              (Colors{hex("#271C6A"), hex("#E7ECF1"), hex("#A6B3CB"), hex("#758498"), hex("#445565"), hex("#D33643"),
                      hex("#181822"), Color::white(), hex("#05B384")}));
    const auto [light, medium, bgPrimary, scrim, alert, item, promoIcon, errorIcon, swOff, swOn] = BackgroundColors{};
    EXPECT_EQ(
        (Colors{light, medium, bgPrimary, scrim, alert, item, promoIcon, errorIcon, swOff, swOn}),
        (Colors{hex("#F7F8FA"), hex("#E7ECF1"), Color::white(), Color{0, 0, 0, 0.8}, hex("#FDF3E9"),
                hex("#346ECE", 0.03), hex("#346ECE", 0.1), hex("#F2A4AA"), hex("#346ECE", 0.18), hex("#05B384")}));
    const auto [generic, borderAlert, promo, branded] = BorderColors{};
    EXPECT_EQ((Colors{generic, borderAlert, promo, branded}),
              (Colors{hex("#919BAB", 0.3), hex("#FBE0CC", 0.5), hex("#919BAB", 0.15), hex("#346ECE", 0.1)}));
    const auto [bPrimary, bSecondary, dark, bDisabled] = ButtonColors{};
    EXPECT_EQ((Colors{bPrimary, bSecondary, dark, bDisabled}),
              (Colors{hex("#346ECE"), hex("#E7ECF1"), hex("#181822"), hex("#E7ECF1")}));
    const auto [iPrimary, iPromo, iGeneric, iAlert, success, iError] = IconColors{};
    EXPECT_EQ((Colors{iPrimary, iPromo, iGeneric, iAlert, success, iError}),
              (Colors{hex("#346ECE"), hex("#346ECE"), hex("#A6B3CB"), hex("#F4B26F"), hex("#097958"), hex("#D33643")}));
}

TEST(DesignSystemDefaults, FontsInDeclaredOrder) {
    const auto [title, body, subhead, footnote] = ToviFonts{};
    const auto [large, medium, smallSemiBold, smallMedium, mini] = title;
    const auto [bold, semibold, bodyMedium] = body;
    auto system = [](double size, FontWeight weight) { return Font::system(size, weight); };
    using W = FontWeight;
    EXPECT_EQ(
        (std::vector<Font>{large, medium, smallSemiBold, smallMedium, mini, bold, semibold, bodyMedium, subhead,
                           footnote}),
        (std::vector<Font>{system(48, W::bold), system(20, W::semibold), system(18, W::semibold), system(18, W::medium),
                           system(14, W::medium), system(16, W::bold), system(16, W::semibold), system(16, W::medium),
                           system(14, W::medium), system(13, W::medium)}));
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
