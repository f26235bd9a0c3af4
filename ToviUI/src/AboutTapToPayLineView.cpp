#include "ToviUI/AboutTapToPayLineView.hpp"

#include <array>
#include <string_view>

#include "ToviUI/ToviDesignSystem.hpp"
#include "ToviUI/ToviImage.hpp"
#include "ToviUI/ToviLocalization.hpp"
#include "platform/view/Builders.hpp"

namespace tovi {

using namespace platform::view;

namespace {

// One row per line type, in the enum's order. Texts are translation keys; "%@" is where the
// merchant's name goes. The device wallet's own names stay as it spells them.
struct LineRow {
    AboutTapToPayLineType type;
    std::string_view name;
    ToviImageSource icon;
    std::string_view title;
    std::string_view text;
};

constexpr std::array<LineRow, 3> kLines{{
    {AboutTapToPayLineType::addToWallet, "addToWallet", ToviImageSource::wallet, "Add to Apple Wallet",
     "Tap \u201cAdd to Apple Wallet\u201d button and follow the instructions."},
    {AboutTapToPayLineType::checkout, "checkout", ToviImageSource::nfc, "How to Checkout",
     "Open Apple Wallet and select your %@ card. Tap to checkout when prompted."},
    {AboutTapToPayLineType::use, "use", ToviImageSource::location, "Where to Use",
     "Works at any %@ location that takes NFC payment (Tap to Pay)."},
}};

}  // namespace

std::string_view rawValue(AboutTapToPayLineType type) {
    return kLines[static_cast<std::size_t>(type)].name;
}

AboutTapToPayLine aboutTapToPayLine(AboutTapToPayLineType type, const std::string& merchantName) {
    const LineRow& row = kLines[static_cast<std::size_t>(type)];
    return {row.icon, localized(row.title), localized(row.text, merchantName)};
}

Node AboutTapToPayLineView::body() const {
    const auto& ds = ToviDesignSystem::shared();
    const AboutTapToPayLine line = aboutTapToPayLine(lineType, uiModel.merchantName);
    return HStack({ToviImage{line.icon, RenderingMode::templated}.body().frame(33, 33).foregroundColor(
                       ds.colors.brand.primary),
                   VStack({Text(line.title).font(ds.fonts.title.medium).foregroundColor(ds.colors.text.primary),
                           Text(line.text).font(ds.fonts.body.medium).foregroundColor(ds.colors.text.primary)},
                          Alignment::leading)
                       .fillWidth(Alignment::leading)},
                  Alignment::center, 6)
        .viewType("AboutTapToPayLineView");
}

}  // namespace tovi
