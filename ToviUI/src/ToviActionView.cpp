#include "ToviUI/ToviActionView.hpp"

#include "ToviUI/ToviDesignSystem.hpp"
#include "ToviUI/ToviImage.hpp"
#include "platform/view/Builders.hpp"

namespace tovi {

using namespace platform::view;

Node ToviActionButtonStyle::operator()(const Node& label, bool isPressed) const {
    const auto& ds = ToviDesignSystem::shared();
    Node iconNode = icon ? Node(*icon).frame(24, 24).foregroundColor(ds.colors.brand.primary) : Node{};
    Node subtitleNode =
        subtitle ? Text(*subtitle).font(ds.fonts.subhead).foregroundColor(ds.colors.text.secondary) : Node{};
    return HStack({iconNode, VStack({label, subtitleNode}, Alignment::leading, 2), Spacer(),
                   endSlot ? endSlot() : Node{}, ToviImage{ToviImageSource::chevronRight}.body().frame(24, 24)},
                  Alignment::center, 6)
        .frame(Frame{.minHeight = 50})
        .contentShapeRectangle()
        .opacity(isPressed ? 0.5 : 1);
}

Node ToviActionView::body() const {
    const auto& ds = ToviDesignSystem::shared();
    return Button(Text(label).font(ds.fonts.body.medium), onClick)
        .buttonStyle(ToviActionButtonStyle{icon, subtitle, endSlot})
        .viewType("ToviActionView");
}

}  // namespace tovi
