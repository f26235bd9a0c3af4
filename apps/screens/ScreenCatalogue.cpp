#include "ScreenCatalogue.hpp"

#include <algorithm>
#include <array>

#include "CardFieldsScreen.hpp"
#include "CurrencyEntryScreen.hpp"
#include "PreviewScreens.hpp"
#include "WalletPartsScreens.hpp"
#include "WalletStatesScreen.hpp"

namespace tovi::screens {

namespace {

constexpr std::array kScreens{
    ScreenEntry{"walletStates", "Wallet load: loading, error with retry, loaded", walletStatesScreen},
    ScreenEntry{"cardFields", "Secure card fields, tokenized against the sandbox vault", cardFieldsScreen},
    ScreenEntry{"components", "Every shared component in its states", componentsScreen},
    ScreenEntry{"errorView", "The error view, with its retry counted", errorViewScreen},
    ScreenEntry{"currencyEntry", "Amount entry: the custom amount row and the till-style cents field",
                currencyEntryScreen},
    ScreenEntry{"history", "Transaction history of the sandbox wallet", historyScreen},
    ScreenEntry{"paymentPicker", "Card picker on the saved cards; its add row publishes a new card",
                paymentPickerScreen},
    ScreenEntry{"aboutTapToPay", "How to use the balance in-store, with its sheet", aboutTapToPayScreen},
};

}  // namespace

std::span<const ScreenEntry> screenCatalogue() {
    return kScreens;
}

const ScreenEntry* findScreen(std::string_view name) {
    auto it = std::ranges::find(kScreens, name, &ScreenEntry::name);
    return it == kScreens.end() ? nullptr : &*it;
}

}  // namespace tovi::screens
