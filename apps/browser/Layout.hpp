#pragma once
// Layout checks on a loaded page: where the browser really put a set of elements, and whether
// each of them got a size, holds what it draws and keeps clear of the others.
//
//   auto sections = tovi::browser::boxesOf(browser, "[data-id^='section:']", "data-id");
//   EXPECT_THAT(tovi::browser::layoutFaults(sections), testing::IsEmpty());

#include <string>
#include <vector>

#include "browser/Browser.hpp"
#include "platform/view/Geometry.hpp"

namespace tovi::browser {

// Where an element lies, in page coordinates (CSS pixels, independent of scrolling).
struct Box {
    std::string name;
    // The element's border box.
    platform::view::Rect border;
    // The smallest area that holds the element and everything shown inside it. Larger than
    // `border` when the element was laid out smaller than its content, which then spills over
    // whatever lies next to it.
    platform::view::Rect content;
};

// The boxes of the elements that match the CSS `selector`, in document order, each named by
// its `nameAttribute`.
[[nodiscard]] std::vector<Box> boxesOf(Browser& browser, const std::string& selector, const std::string& nameAttribute);

// One line per fault: a box with no width or no height, content that spills out of its box by
// more than a pixel, or two boxes that share some area (touching edges do not count).
[[nodiscard]] std::vector<std::string> layoutFaults(const std::vector<Box>& boxes);

}  // namespace tovi::browser
