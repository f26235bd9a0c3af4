#include "ToviUI/SheetHeader.hpp"

#include "ToviUI/ToviDesignSystem.hpp"
#include "ToviUI/ToviImage.hpp"
#include "platform/view/Builders.hpp"

namespace tovi {

using namespace platform::view;

namespace {

Node slot(const std::function<void()>& action, ToviImageSource icon, const char* id) {
    if (!action) return Spacer().frame(24, 24);
    const auto& c = ToviDesignSystem::shared().colors;
    return Button(ToviImage{icon}.body().frame(24, 24).foregroundColor(c.text.primary), action)
        .frame(24, 24)
        .accessibilityIdentifier(id);
}

}  // namespace

Node SheetHeader::body() const {
    const auto& ds = ToviDesignSystem::shared();
    return HStack({slot(onBackClicked, ToviImageSource::backArrow, "sheetHeader.back"), Spacer(),
                   Text(title).font(ds.fonts.title.medium).foregroundColor(ds.colors.text.bold).lineLimit(1), Spacer(),
                   slot(onDoneClicked, ToviImageSource::close, "sheetHeader.done")},
                  Alignment::center, 0)
        .padding(Edge::horizontal, 24)
        .viewType("SheetHeader");
}

}  // namespace tovi
