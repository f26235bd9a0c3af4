#include "ScreenCatalogue.hpp"

#include <algorithm>
#include <array>

#include "WalletStatesScreen.hpp"

namespace tovi::screens {

namespace {

constexpr std::array kScreens{
    ScreenEntry{"walletStates", "Wallet load: loading, error with retry, loaded", walletStatesScreen},
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
