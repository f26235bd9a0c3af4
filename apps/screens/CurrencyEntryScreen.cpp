#include "CurrencyEntryScreen.hpp"

#include <charconv>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>

#include "Gallery.hpp"
#include "ToviUI/CurrencyInputView.hpp"
#include "ToviUI/CurrencyTextField.hpp"
#include "ToviUI/ToviDesignSystem.hpp"
#include "platform/view/View.hpp"

namespace tovi::screens {

using namespace platform::view;

namespace {

Node boundValue(std::string text, std::string id) {
    const auto& ds = ToviDesignSystem::shared();
    return Text(std::move(text))
        .font(ds.fonts.footnote)
        .foregroundColor(ds.colors.text.secondary)
        .accessibilityIdentifier(std::move(id));
}

}  // namespace

Body currencyEntryScreen(SandboxEnvironment&) {
    return [](Scope& s) {
        auto dollars = s.state("dollars", std::optional<double>());
        auto cents = s.state("cents", std::int64_t{0});
        const auto& ds = ToviDesignSystem::shared();
        std::string dollarsText = "none";
        if (dollars.get()) {
            char shortest[32];
            dollarsText.assign(shortest, std::to_chars(std::begin(shortest), std::end(shortest), *dollars.get()).ptr);
        }
        return ScrollView(
            VStack({Text("Custom amount").font(ds.fonts.title.medium).foregroundColor(ds.colors.text.bold),
                    s.view(CurrencyInputView{.value = dollars.binding(),
                                             .isSelected = true,
                                             .validCurrencyRange = gallery::sampleCurrencyRange()}),
                    boundValue("Bound dollars: " + dollarsText, "dollarsValue"),
                    Text("Cents, like a till").font(ds.fonts.title.medium).foregroundColor(ds.colors.text.bold),
                    s.view(CurrencyTextField(cents.binding(), cents.binding(), 17, "Amount"))
                        .accessibilityIdentifier("centsField")
                        .padding(12)
                        .background(RoundedRectangle(16).stroke(ds.colors.borders.generic, 1)),
                    boundValue("Bound cents: " + std::to_string(cents.get()), "centsValue")},
                   Alignment::leading, 16)
                .padding(20));
    };
}

}  // namespace tovi::screens
