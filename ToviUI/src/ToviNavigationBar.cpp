#include "ToviUI/ToviNavigationBar.hpp"

#include "platform/view/Modifiers.hpp"

namespace tovi {

using namespace platform::view;

Node toviNavigationBar(Node content, std::string title, ToviNavigationBarSlots slots) {
    return content.navigationTitle(std::move(title))
        .navigationBarTitleDisplayMode(TitleDisplayMode::inlined)
        .toolbar(std::move(slots.leading), std::move(slots.trailing));
}

}  // namespace tovi
