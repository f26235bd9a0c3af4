#pragma once
// The demo's pages: the home page that lists the screens, and the frame around a live screen
// (a phone-sized stage, the sandbox panel beside it, and the script that forwards taps and keys
// to the server and swaps updated screens in).

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "DemoSession.hpp"
#include "ScreenCatalogue.hpp"

namespace tovi::demo {

// Trusted markup for the renderer's head and for the body around the screen.
struct PageChrome {
    std::string head;
    std::string bodyStart;
    std::string bodyEnd;
};

[[nodiscard]] PageChrome sessionChrome(const std::string& sessionId, const screens::ScreenEntry& screen,
                                       const DemoSettings& settings, std::uint64_t version);

[[nodiscard]] std::string homePage(std::span<const screens::ScreenEntry> screens);

// A small page for a request that cannot be served (an unknown screen or session).
[[nodiscard]] std::string messagePage(std::string_view title, std::string_view message);

// The script of a session's page.
[[nodiscard]] std::string_view demoScript();

}  // namespace tovi::demo
