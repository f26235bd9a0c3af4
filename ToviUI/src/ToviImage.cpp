#include "ToviUI/ToviImage.hpp"

#include <string>

#include "ToviUI/ToviTheme.hpp"
#include "platform/view/Builders.hpp"

namespace tovi {

platform::view::Node ToviImage::body() const {
    using namespace platform::view;
    return AssetImage(std::string(rawValue(source)), ToviTheme::bundle)
        .resizable()
        .renderingMode(renderingMode)
        .viewType("ToviImage");
}

}  // namespace tovi
