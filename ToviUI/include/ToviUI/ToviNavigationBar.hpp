#pragma once
// toviNavigationBar: gives a host's view the wallet's navigation bar: `title` shown inline, and
// the slots placed at the leading and trailing end of the toolbar where given. For hosts; the
// wallet itself does not call it.
//
//     toviNavigationBar(content, "Wallet", {.trailing = doneButton});

#include <optional>
#include <string>

#include "platform/view/Node.hpp"

namespace tovi {

struct ToviNavigationBarSlots {
    std::optional<platform::view::Node> leading = std::nullopt;
    std::optional<platform::view::Node> trailing = std::nullopt;
};

[[nodiscard]] platform::view::Node toviNavigationBar(platform::view::Node content, std::string title,
                                                     ToviNavigationBarSlots slots = {});

}  // namespace tovi
