#include "ToviUI/ToviButton.hpp"

#include "ToviUI/ToviBaseButtonStyle.hpp"
#include "ToviUI/ToviDesignSystem.hpp"
#include "platform/view/Builders.hpp"

namespace tovi {

using namespace platform::view;

Node ToviButton::body() const {
    const auto& ds = ToviDesignSystem::shared();
    Node content =
        isLoading
            ? ProgressView().tint(Color::white())
            : HStack({leftIcon.value_or(Node{}), Text(label).font(ds.fonts.body.bold), rightIcon.value_or(Node{})},
                     Alignment::center, 8);
    return Button(content, onClick)
        .disabled(!enabled || isLoading)
        .animation(Animation::easeInOut(), "isLoading")
        .buttonStyle(ToviBaseButtonStyle{backgroundColor.value_or(ds.colors.buttons.primary),
                                         labelColor.value_or(ds.colors.text.button), drawnCornerRadius, enabled})
        .viewType("ToviButton");
}

}  // namespace tovi
