#include "WalletPartsScreens.hpp"

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ToviUI/AboutTapToPayActionView.hpp"
#include "ToviUI/PaymentMethodPreview.hpp"
#include "ToviUI/SelectPaymentMethodOptionBottomSheet.hpp"
#include "ToviUI/TransactionHistoryTable.hpp"
#include "WalletStatesScreen.hpp"
#include "platform/view/View.hpp"

namespace tovi::screens {

using namespace platform::view;

Body historyScreen(SandboxEnvironment& environment) {
    return [&environment](Scope& s) {
        return walletScreen(s, environment, [](BalanceViewModel& viewModel) {
            return ScrollView(TransactionHistoryTable{viewModel.transactions.get()}.body().padding(16));
        });
    };
}

Body paymentPickerScreen(SandboxEnvironment& environment) {
    return [&environment](Scope& s) {
        // The view model hears of added cards on a channel of its own: its refetch would drop
        // a card the sandbox never saved. The screen keeps those cards itself.
        auto modelUpdates = s.stateObject<PaymentMethodUpdateManager>(
            "modelUpdates", [] { return std::make_shared<PaymentMethodUpdateManager>(); });
        auto selected = s.state("selected", std::optional<PaymentMethodUiModel>());
        auto added = s.state("added", std::vector<PaymentMethodUiModel>());
        return walletScreen(
            s, environment,
            [&](BalanceViewModel& viewModel) {
                std::vector<PaymentMethodUiModel> methods = added.get();
                for (const auto& method : viewModel.paymentMethodUiModels.get()) methods.push_back(method);
                auto addCard = [&environment, added] {
                    const std::string lastFour = std::to_string(1000 + added->size());
                    ToviSharedPaymentMethod card{"pm_added_" + lastFour, {"discover", "601111", lastFour}};
                    auto next = added.get();
                    next.insert(next.begin(), makePaymentMethodUiModel(card));
                    added.set(std::move(next));
                    environment.paymentMethods().onPaymentMethodAdded(card);
                };
                return VStack({PaymentMethodPreview{selected.get(), [] {}}.body().padding(Edge::horizontal, 16),
                               s.view(SelectPaymentMethodOptionBottomSheet{.paymentMethods = std::move(methods),
                                                                           .selectedPaymentMethod = selected.binding(),
                                                                           .onBackClicked = [] {},
                                                                           .addPaymentSourceClick = addCard,
                                                                           .updates = &environment.paymentMethods()})},
                              Alignment::leading, 0);
            },
            modelUpdates.get());
    };
}

Body aboutTapToPayScreen(SandboxEnvironment& environment) {
    return [&environment](Scope& s) {
        return walletScreen(s, environment, [&s, &environment](BalanceViewModel& viewModel) {
            // Off a phone the device wallet cannot add passes, so the view model leaves out the
            // tap to pay rows; this screen shows the row anyway, for the sandbox's merchant.
            const TapToPayUiModel model =
                viewModel.tapToPayUiModel->value_or(TapToPayUiModel(environment.wallet()->merchantSnapshot().name));
            return VStack({s.view(AboutTapToPayActionView{model}).padding(Edge::horizontal, 16), Spacer()});
        });
    };
}

}  // namespace tovi::screens
