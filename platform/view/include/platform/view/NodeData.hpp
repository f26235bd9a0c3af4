#pragma once
// NodeData: everything a node holds. Read it through `Node::data()` or `node->field`.

#include <optional>
#include <string>
#include <vector>

#include "platform/view/Kinds.hpp"
#include "platform/view/Modifiers.hpp"
#include "platform/view/Node.hpp"

namespace platform::view {

struct NodeData {
    Kind kind = Kind::empty;
    std::string viewType{};
    Payload payload{};
    std::vector<Node> children{};
    std::vector<Layer> layers{};  // inside out
    Environment env{};
    std::string accessibilityId{};
    std::string accessibilityLabel{};
    std::string identity{};
    Handlers on{};
    std::vector<AnimationTag> animations{};
    std::optional<TransitionTag> transition{};
    std::optional<NavigationItem> navigation{};
    std::vector<Presentation> presentations{};
    bool hitTesting = true;
    bool contentShapeRectangle = false;

    template <class T>
    [[nodiscard]] const T* as() const {
        return std::get_if<T>(&payload);
    }
};

// Calls `visit` for every node that is part of what `node` shows, in drawing order:
// backgrounds, content children, overlays, clip shapes excluded, toolbar items, then presented
// destinations and sheets. A button shows its styled label; an asynchronous image its content
// or its placeholder by phase.
void forEachShownChild(const Node& node, const std::function<void(const Node&)>& visit);

}  // namespace platform::view
