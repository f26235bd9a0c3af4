#include "Gallery.hpp"

#include <string>
#include <utility>
#include <vector>

#include "ToviUI/AboutTapToPayActionView.hpp"
#include "ToviUI/AboutTapToPayInfoView.hpp"
#include "ToviUI/AddNewPaymentMethodRowView.hpp"
#include "ToviUI/AlertView.hpp"
#include "ToviUI/CurrencyInputView.hpp"
#include "ToviUI/FlipAnimation.hpp"
#include "ToviUI/PaymentMethodOptionsList.hpp"
#include "ToviUI/PaymentMethodPreview.hpp"
#include "ToviUI/PaymentMethodRowView.hpp"
#include "ToviUI/SelectPaymentMethodOptionBottomSheet.hpp"
#include "ToviUI/SheetHeader.hpp"
#include "ToviUI/ToviActionView.hpp"
#include "ToviUI/ToviAssets.hpp"
#include "ToviUI/ToviButton.hpp"
#include "ToviUI/ToviDesignSystem.hpp"
#include "ToviUI/ToviErrorView.hpp"
#include "ToviUI/ToviImage.hpp"
#include "ToviUI/ToviNavigationBar.hpp"
#include "ToviUI/ToviSpacing.hpp"
#include "ToviUI/ToviTheme.hpp"
#include "ToviUI/TransactionHistoryTable.hpp"
#include "platform/view/HtmlRenderer.hpp"
#include "platform/view/ScreenHost.hpp"
#include "platform/view/View.hpp"

namespace tovi::gallery {

namespace {

using namespace platform::view;

constexpr double columnWidth = 420;

const ToviDesignSystem& ds() {
    return ToviDesignSystem::shared();
}

void noop() {}

Node caption(std::string text) {
    return Text(std::move(text)).font(Font::caption()).foregroundColor(ds().colors.text.secondary);
}

// One labelled state of a component.
Node sample(std::string state, Node content) {
    return VStack({caption(std::move(state)), std::move(content)}, Alignment::leading, spacing::xs)
        .fillWidth(Alignment::leading);
}

// A titled card of samples; its identifier marks it for the layout check in a browser.
Node section(const std::string& title, std::vector<Node> samples) {
    samples.insert(samples.begin(),
                   Text(title).font(ds().fonts.title.smallSemiBold).foregroundColor(ds().colors.text.bold));
    return VStack(std::move(samples), Alignment::leading, spacing::m)
        .padding(spacing::m)
        .fillWidth(Alignment::leading)
        .background(RoundedRectangle(16, CornerStyle::continuous)
                        .fill(ds().colors.background.primary)
                        .stroke(ds().colors.borders.generic, 1))
        .accessibilityIdentifier("section:" + title);
}

Node swatch(const char* name, Color color) {
    return HStack({Circle().fill(color).stroke(ds().colors.borders.generic, 1).frame(20, 20), caption(name)},
                  Alignment::center, spacing::s);
}

Node palette() {
    const ToviColorScheme& c = ds().colors;
    return section(
        "Brand tokens",
        {HStack({VStack({swatch("brand.primary", c.brand.primary), swatch("brand.secondary", c.brand.secondary),
                         swatch("buttons.primary", c.buttons.primary), swatch("icons.primary", c.icons.primary),
                         swatch("icons.promo", c.icons.promo)},
                        Alignment::leading, spacing::xs),
                 VStack({swatch("text.link", c.text.link), swatch("switchEnabled", c.background.switchEnabled),
                         swatch("switchDisabled", c.background.switchDisabled),
                         swatch("promoIcon", c.background.promoIcon), swatch("borders.branded", c.borders.branded)},
                        Alignment::leading, spacing::xs)},
                Alignment::top, spacing::l)});
}

Node buttons() {
    const ToviImage plus{ToviImageSource::plus, RenderingMode::templated};
    const ToviImage chevron{ToviImageSource::chevronRight, RenderingMode::templated};
    return section(
        "ToviButton",
        {sample("enabled", ToviButton{.label = "Add Funds", .onClick = noop}),
         sample("enabled, with icons",
                ToviButton{.label = "Add Card", .leftIcon = plus, .rightIcon = chevron, .onClick = noop}),
         sample("pressed", Node(ToviButton{.label = "Add Funds", .onClick = noop}).pressed()),
         sample("disabled", ToviButton{.label = "Add Funds", .enabled = false, .onClick = noop}),
         sample("loading", ToviButton{.label = "Add Funds", .isLoading = true, .onClick = noop}),
         sample("corner radius 8 asked, 16 drawn", ToviButton{.label = "Reload", .cornerRadius = 8, .onClick = noop}),
         sample("dark, own colours",
                ToviButton{.label = "Pay", .backgroundColor = ds().colors.buttons.dark, .onClick = noop})});
}

Node actionViews() {
    const ToviImage autopay{ToviImageSource::autopay, RenderingMode::templated};
    return section(
        "ToviActionView",
        {sample("label only", ToviActionView{.label = "Add Payment Method", .onClick = noop}),
         sample("icon, subtitle and end slot", ToviActionView{.icon = autopay,
                                                              .label = "Auto Reload",
                                                              .subtitle = "When balance falls below $10",
                                                              .endSlot = [] { return caption("Off"); },
                                                              .onClick = noop}),
         sample("pressed", Node(ToviActionView{.icon = ToviImage{ToviImageSource::wallet, RenderingMode::templated},
                                               .label = "Manage Cards",
                                               .onClick = noop})
                               .pressed())});
}

Node alerts() {
    return section(
        "AlertView",
        {sample("bonus, arrow up",
                AlertView{{"Earn 5% back", "On every reload this month", AlertViewType::bonus, AlertShape::upArrow}}),
         sample("bonus, arrow down",
                AlertView{{"Earn 5% back", "On every reload this month", AlertViewType::bonus, AlertShape::downArrow}}),
         sample("alert, arrow up",
                AlertView{{"Low balance", "Reload to keep paying", AlertViewType::alert, AlertShape::upArrow}}),
         sample("alert, arrow down, one line",
                AlertView{{"Low balance", std::nullopt, AlertViewType::alert, AlertShape::downArrow}})});
}

Node headers() {
    return section("SheetHeader", {sample("back and done", SheetHeader{"Reload", noop, noop}),
                                   sample("back only", SheetHeader{"Choose Amount", noop}),
                                   sample("title only", SheetHeader{"Payment Methods"})});
}

Node navigation() {
    Node content = VStack({Text("Host content").foregroundColor(ds().colors.text.primary)}).fillWidth().fillHeight();
    Node bar = toviNavigationBar(content, "Wallet",
                                 {.leading = Button("Close", noop).foregroundColor(ds().colors.text.link),
                                  .trailing = Button("Help", noop).foregroundColor(ds().colors.text.link)});
    return section("toviNavigationBar",
                   {sample("title with leading and trailing slots", NavigationStack(bar).frame(Frame{.height = 120}))});
}

Node errorAndFlip() {
    return section("ToviErrorView and flip",
                   {sample("load error", ToviErrorView{noop}.body().fillWidth()),
                    sample("flip wrapper (turns over when its item changes)",
                           flip(ToviImage{ToviImageSource::toviCard}.body().frame(96, 64), 0))});
}

Node currencyInput(std::optional<double> dollars, bool selected) {
    return buildOnce([=](Scope& s) {
        return s.view(CurrencyInputView{.value = Binding<std::optional<double>>::constant(dollars),
                                        .isSelected = selected,
                                        .validCurrencyRange = sampleCurrencyRange()});
    });
}

Node currencyInputs() {
    return section("CurrencyInputView", {sample("empty", currencyInput(std::nullopt, false)),
                                         sample("selected", currencyInput(std::nullopt, true)),
                                         sample("above the maximum: message", currencyInput(150, true)),
                                         sample("a tier reached: hint", currencyInput(25, true))});
}

Node images() {
    std::vector<Node> rows;
    std::vector<Node> row;
    for (std::size_t i = 0; i < toviImageAssetNames.size(); ++i) {
        const auto source = static_cast<ToviImageSource>(i);
        row.push_back(VStack({ToviImage{source}.body().foregroundColor(ds().colors.icons.primary).frame(36, 24),
                              caption(std::string(rawValue(source))).lineLimit(1)},
                             Alignment::center, spacing::xs)
                          .frame(Frame{.width = 86}));
        if (row.size() == 4 || i + 1 == toviImageAssetNames.size()) {
            rows.push_back(HStack(std::exchange(row, {}), Alignment::top, spacing::xs));
        }
    }
    return section("ToviImage", {VStack(std::move(rows), Alignment::leading, spacing::s)});
}

// Sheets hold scroll views, which take the height they are given, as on a phone.
constexpr double sheetHeight = 420;

// Texts no design expects: a display name of 200 characters, and right-to-left script.
const std::string longName = [] {
    std::string name;
    while (name.size() < 200) name += "Reload at Tovi Coffee Roasters Downtown ";
    return name.substr(0, 200);
}();
const std::string rightToLeft = "\u0634\u062d\u0646 \u0627\u0644\u0631\u0635\u064a\u062f";

Node history() {
    return section("TransactionHistoryTable",
                   {sample("preview rows", TransactionHistoryTable{testTransactions()}),
                    sample("empty", TransactionHistoryTable{}),
                    sample("long name, right to left, no date, no mark",
                           TransactionHistoryTable{{{"long", longName, "May 1 \u2022 09:00 AM", "$1,234.56", false},
                                                    {"rtl", rightToLeft, "", "$3.00", std::nullopt}}})});
}

Node paymentMethods() {
    const PaymentMethodUiModel visa{"pm_1", {CardBrand::visa, "424242", "4242"}, false};
    const PaymentMethodUiModel expired{"pm_2", {CardBrand::amex, "378282", "0005"}, true};
    const PaymentMethodUiModel unknown{"pm_3", {CardBrand::unknown, "", ""}, false};
    const auto selected = Binding<std::optional<PaymentMethodUiModel>>::constant(visa);
    return section(
        "Payment methods",
        {sample("preview: a card, an expired card, none",
                VStack({PaymentMethodPreview{visa, noop}, PaymentMethodPreview{expired, noop},
                        PaymentMethodPreview{std::nullopt, noop}},
                       Alignment::leading, 0)),
         sample("row: long text, right to left",
                VStack({PaymentMethodRowView{ToviImageSource::placeholderCard, longName, true, true},
                        PaymentMethodRowView{ToviImageSource::visa, rightToLeft, false, false}},
                       Alignment::leading, 0)),
         sample("options list, unknown brand and empty last four, add row",
                VStack({PaymentMethodOptionsList{{visa, expired, unknown}, selected}, AddNewPaymentMethodRowView{}},
                       Alignment::leading, 0)),
         sample("picker sheet", SelectPaymentMethodOptionBottomSheet{.paymentMethods = {visa, expired},
                                                                     .selectedPaymentMethod = selected}
                                    .content()
                                    .frame(Frame{.height = sheetHeight}))});
}

Node aboutTapToPay() {
    return section("About tap to pay",
                   {sample("row", AboutTapToPayActionView{TapToPayUiModel("Tovi Coffee")}.body(false, [](bool) {})),
                    sample("sheet", AboutTapToPayInfoView{TapToPayUiModel("Tovi Coffee")}.body().frame(
                                        Frame{.height = sheetHeight})),
                    sample("sheet, empty merchant name",
                           AboutTapToPayInfoView{TapToPayUiModel("")}.body().frame(Frame{.height = sheetHeight}))});
}

}  // namespace

CustomCurrencyInputUiModel sampleCurrencyRange() {
    return {500, 10000, std::vector<ReloadBucketUiModel>{{"tier1", 1000, 100}, {"tier2", 2000, 300}}};
}

Node galleryColumn(const std::string& title) {
    return VStack({Text(title).font(ds().fonts.title.medium).foregroundColor(ds().colors.text.bold), palette(),
                   buttons(), actionViews(), alerts(), headers(), navigation(), errorAndFlip(), currencyInputs(),
                   images(), history(), paymentMethods(), aboutTapToPay()},
                  Alignment::leading, spacing::l)
        .padding(spacing::m)
        .frame(Frame{.width = columnWidth})
        .background(ColorView(ds().colors.background.light))
        .accessibilityIdentifier("column:" + title);
}

namespace {

ToviFonts serifFonts() {
    ToviFonts fonts;
    for (Font* f : {&fonts.title.large, &fonts.title.medium, &fonts.title.smallSemiBold, &fonts.title.smallMedium,
                    &fonts.title.mini, &fonts.body.bold, &fonts.body.semibold, &fonts.body.medium, &fonts.subhead,
                    &fonts.footnote}) {
        f->design = FontDesign::serif;
    }
    return fonts;
}

}  // namespace

void setCustomBrandTheme() {
    ToviTheme::set(BrandColors(Color::hex("#C2410C"), Color::hex("#0F766E")), serifFonts());
}

std::string renderGalleryHtml() {
    ToviTheme::set();
    Node defaultColumn = galleryColumn("Default theme");
    setCustomBrandTheme();
    Node customColumn = galleryColumn("Custom brand theme");
    ToviTheme::set();

    Node page = HStack({std::move(defaultColumn), std::move(customColumn)}, Alignment::top, spacing::l)
                    .padding(spacing::l)
                    .colorScheme(ColorScheme::light);
    HtmlOptions options = toviHtmlOptions("Tovi component gallery");
    options.width = 2 * columnWidth + 3 * spacing::l;
    options.height = 900;
    options.pageBackground = Color::hex("#E7ECF1");
    return renderHtml(page, options);
}

}  // namespace tovi::gallery
