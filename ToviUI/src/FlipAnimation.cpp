#include "ToviUI/FlipAnimation.hpp"

#include "platform/view/Builders.hpp"

namespace tovi {

using namespace platform::view;

Node flipWrapper(Node content, std::size_t trigger) {
    return Group({std::move(content)})
        .transition(TransitionTag{"flipFromRight", flipDuration, flipFromRightOption, trigger})
        .viewType("FlipWrapper");
}

}  // namespace tovi
