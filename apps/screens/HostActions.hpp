#pragma once
// The actions a tool outside the process can take on a live screen, named and argued the same
// way by the scenario runner (JSON lines) and the demo server (the page's requests):
//
//   tap, toggle                 a node
//   type, paste                 a text field node and "keys"
//   delete                      a text field node, "times" (1 when absent)
//   select                      a text field node, "location" and "length" (0) in UTF-16 units
//   leave                       a text field node
//   refresh                     a scroll view node
//   dismiss, back               nothing
//
// A node is named by "id" (accessibility id), "text" (exact text) or "path" (see ScreenHost.hpp).

#include <expected>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include "platform/view/ScreenHost.hpp"

namespace tovi::screens {

[[nodiscard]] bool isHostAction(std::string_view name);

// Runs `action` with the arguments of `input` on `host`; the reason when the input is wrong or
// the screen refused. Never throws.
[[nodiscard]] std::expected<void, std::string> runHostAction(platform::view::ScreenHost& host, std::string_view action,
                                                             const nlohmann::ordered_json& input);

}  // namespace tovi::screens
