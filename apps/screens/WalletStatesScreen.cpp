#include "WalletStatesScreen.hpp"

#include <string>

#include "ToviUI/BalanceViewModel.hpp"
#include "ToviUI/ToviDesignSystem.hpp"
#include "ToviUI/ToviErrorView.hpp"
#include "platform/view/View.hpp"

namespace tovi::screens {

using namespace platform::view;

Node walletScreen(Scope& s, SandboxEnvironment& environment, const std::function<Node(BalanceViewModel&)>& loaded,
                  PaymentMethodUpdateManager* updates) {
    auto viewModel = s.stateObject<BalanceViewModel>("viewModel", [&environment, updates] {
        const auto& wallet = environment.wallet();
        return BalanceViewModel::create(
            wallet, wallet->customerId(), wallet->merchantId(),
            {.callExecutor = &environment.callExecutor(),
             .mainQueue = environment.mainQueue(),
             .paymentMethodUpdates = updates != nullptr ? updates : &environment.paymentMethods()});
    });
    switch (viewModel->balanceScreenUiState.get()) {
        case BalanceScreenUiState::loading:
            return ProgressView().controlSize(ControlSize::large).fillHeight();
        case BalanceScreenUiState::error:
            return ToviErrorView{[viewModel] {
                       viewModel->balanceScreenUiState = BalanceScreenUiState::loading;
                       viewModel->fetchBalanceData();
                   }}
                .body()
                .padding(Edge::horizontal, 20)
                .fillHeight();
        case BalanceScreenUiState::loaded:
            break;
    }
    return loaded(*viewModel);
}

Body walletStatesScreen(SandboxEnvironment& environment) {
    return [&environment](Scope& s) {
        return walletScreen(s, environment, [](BalanceViewModel& viewModel) {
            const auto& ds = ToviDesignSystem::shared();
            return VStack({Text(viewModel.walletBalanceDisplayString.get())
                               .font(ds.fonts.title.large)
                               .foregroundColor(ds.colors.text.primary)
                               .accessibilityIdentifier("balance"),
                           Text(std::to_string(viewModel.paymentMethodUiModels->size()) + " saved cards")
                               .font(ds.fonts.body.medium),
                           Text(std::to_string(viewModel.transactions->size()) + " transactions")
                               .font(ds.fonts.body.medium)},
                          Alignment::center, 8)
                .fillHeight();
        });
    };
}

}  // namespace tovi::screens
