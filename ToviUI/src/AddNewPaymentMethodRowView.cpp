#include "ToviUI/AddNewPaymentMethodRowView.hpp"

#include "ToviUI/ToviDesignSystem.hpp"
#include "ToviUI/ToviImage.hpp"
#include "ToviUI/ToviLocalization.hpp"
#include "platform/view/Builders.hpp"

namespace tovi {

using namespace platform::view;

Node AddNewPaymentMethodRowView::body() const {
    const auto& ds = ToviDesignSystem::shared();
    return HStack({ToviImage{ToviImageSource::plus}.body().frame(24, 24).frame(46, 32),
                   Text(localized("Add New Card")).font(ds.fonts.body.semibold).foregroundColor(ds.colors.text.primary),
                   Spacer()},
                  Alignment::center)
        .frame(Frame{.height = 50})
        .viewType("AddNewPaymentMethodRowView");
}

}  // namespace tovi
