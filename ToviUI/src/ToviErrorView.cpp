#include "ToviUI/ToviErrorView.hpp"

#include "ToviUI/ToviButton.hpp"
#include "ToviUI/ToviDesignSystem.hpp"
#include "ToviUI/ToviImage.hpp"
#include "platform/view/Builders.hpp"

namespace tovi {

using namespace platform::view;

Node ToviErrorView::body() const {
    const auto& ds = ToviDesignSystem::shared();
    const auto& c = ds.colors;
    // The badge colour is fixed: it does not follow branding.
    Node badge = ZStack({RoundedRectangle(38).fill(Color::hex("#F2A4AA")).frame(76, 76),
                         ToviImage{ToviImageSource::error, RenderingMode::templated}
                             .body()
                             .foregroundColor(c.icons.error)
                             .frame(40, 40)})
                     .padding(Edge::bottom, 20);
    return VStack({badge,
                   Text("Please try again.")
                       .font(ds.fonts.title.medium)
                       .foregroundColor(c.text.bold)
                       .padding(Edge::bottom, 4),
                   Text("There was an error loading balance information.")
                       .font(ds.fonts.body.medium)
                       .foregroundColor(c.text.primary)
                       .multilineTextAlignment(HorizontalPart::center)
                       .padding(Edge::bottom, 20),
                   ToviButton{.label = "Retry",
                              .backgroundColor = c.buttons.primary,
                              .labelColor = c.text.button,
                              .cornerRadius = 8,
                              .onClick = onRetryClick}},
                  Alignment::center, 0)
        .viewType("ToviErrorView");
}

}  // namespace tovi
