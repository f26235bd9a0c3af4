#include "ToviUI/SelectPaymentMethodOptionBottomSheet.hpp"

#include <memory>

#include "ToviUI/AddNewPaymentMethodRowView.hpp"
#include "ToviUI/PaymentMethodOptionsList.hpp"
#include "ToviUI/SheetHeader.hpp"
#include "ToviUI/ToviLocalization.hpp"
#include "platform/Cancellable.hpp"
#include "platform/view/Builders.hpp"

namespace tovi {

using namespace platform::view;

Node SelectPaymentMethodOptionBottomSheet::content() const {
    return ScrollView(VStack({SheetHeader{localized("Select Payment Method"), onBackClicked}.body().fillWidth().padding(
                                  Edge::bottom, 8),
                              PaymentMethodOptionsList{paymentMethods, selectedPaymentMethod},
                              AddNewPaymentMethodRowView{}
                                  .body()
                                  .fillWidth()
                                  .contentShapeRectangle()
                                  .onTapGesture(addPaymentSourceClick)
                                  .accessibilityIdentifier("paymentMethod.add")},
                             Alignment::leading, 0)
                          .padding(Edge::vertical, 24)
                          .padding(Edge::horizontal, 16),
                      Axis::vertical, false)
        .viewType(kTypeName);
}

Node SelectPaymentMethodOptionBottomSheet::body(Scope& s) const {
    auto cancellables = s.stateObject<platform::CancellableSet>(
        "cancellables", [] { return std::make_shared<platform::CancellableSet>(); });
    return content()
        .onAppear([cancellables, updates = updates, binding = selectedPaymentMethod] {
            updates->newPaymentObserver()
                .sink([binding](const ToviSharedPaymentMethod& added) { binding.set(makePaymentMethodUiModel(added)); })
                .store(*cancellables);
        })
        .onDisappear([cancellables] { cancellables->cancelAll(); });
}

}  // namespace tovi
