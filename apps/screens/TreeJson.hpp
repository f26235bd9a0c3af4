#pragma once
// The view tree as JSON for tools: one object per shown node with its path (usable as a
// target), kind, view type, text, accessibility id, own font and colour, frame, padding,
// whether it is enabled, which actions it takes, its animation tags and its children. A text
// field shows what the field shows and where its caret is, never more: a secure field hides
// its value here as on a phone.

#include <nlohmann/json.hpp>

#include "platform/view/Inspect.hpp"

namespace tovi::screens {

[[nodiscard]] nlohmann::ordered_json treeJson(const platform::view::ViewRef& node);

}  // namespace tovi::screens
