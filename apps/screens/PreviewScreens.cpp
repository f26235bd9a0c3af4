#include "PreviewScreens.hpp"

#include <string>

#include "Gallery.hpp"
#include "ToviUI/ToviDesignSystem.hpp"
#include "ToviUI/ToviErrorView.hpp"
#include "platform/view/View.hpp"

namespace tovi::screens {

using namespace platform::view;

Body componentsScreen(SandboxEnvironment&) {
    return [](Scope&) { return ScrollView(gallery::galleryColumn("Components")); };
}

Body errorViewScreen(SandboxEnvironment&) {
    return [](Scope& s) {
        auto retries = s.state("retries", 0);
        const auto& ds = ToviDesignSystem::shared();
        return VStack(
                   {ToviErrorView{[retries] { retries.set(retries.get() + 1); }}.body().padding(Edge::horizontal, 20),
                    Text(retries.get() == 0 ? std::string("Not retried yet")
                                            : "Retried " + std::to_string(retries.get()) + " times")
                        .font(ds.fonts.footnote)
                        .foregroundColor(ds.colors.text.secondary)
                        .accessibilityIdentifier("retries")},
                   Alignment::center, 24)
            .fillHeight();
    };
}

}  // namespace tovi::screens
