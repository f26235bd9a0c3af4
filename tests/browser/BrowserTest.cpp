#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "browser/Browser.hpp"
#include "browser/Layout.hpp"

namespace tovi::browser {
namespace {

using ::testing::HasSubstr;

// A form a person fills in: a field at a known place that reports Enter in the title, on a page
// taller than the viewport.
constexpr const char* formPage =
    "data:text/html,<body style='margin:0;height:2000px'>"
    "<input id=f style='position:absolute;left:10px;top:10px;width:200px;height:30px'>"
    "<script>f.onkeydown = e => { if (e.key === 'Enter') document.title = 'sent ' + f.value; };</script>";

std::uint32_t pngHeight(const std::string& png) {
    // The IHDR chunk right after the signature holds the width, then the height, big-endian.
    std::uint32_t h = 0;
    for (int i = 20; i < 24; ++i) h = (h << 8) | static_cast<unsigned char>(png.at(i));
    return h;
}

TEST(Browser, ClicksTypesAndReadsThePageBack) {
    Browser browser({.width = 400, .height = 300});
    browser.navigate(formPage);
    browser.click(50, 25);
    browser.insertText("4242");
    browser.pressKey("Backspace");
    browser.pressKey("Enter");
    EXPECT_EQ(browser.evaluate("document.title"), "sent 424");
    EXPECT_EQ(browser.evaluate("new Promise(r => setTimeout(() => r({a: [1, null]}), 5))"),
              nlohmann::json::parse(R"({"a": [1, null]})"));

    const std::string png = browser.screenshot();
    ASSERT_GT(png.size(), 24u);
    EXPECT_EQ(png.substr(1, 3), "PNG");
    EXPECT_EQ(pngHeight(png), 2000u) << "the whole page, not the 300 px viewport";
}

TEST(Browser, FailuresSayWhatWentWrong) {
    Browser browser({.width = 400, .height = 300});
    EXPECT_THAT([&] { browser.navigate("file:///nonexistent/page.html"); },
                ::testing::ThrowsMessage<BrowserError>(HasSubstr("ERR_FILE_NOT_FOUND")));
    EXPECT_THAT([&] { (void)browser.evaluate("missingFunction()"); },
                ::testing::ThrowsMessage<BrowserError>(HasSubstr("ReferenceError")));
    // Short only now: starting chromium on a busy machine may take longer.
    browser.setTimeout(std::chrono::seconds(2));
    EXPECT_THAT([&] { (void)browser.evaluate("new Promise(() => {})"); },
                ::testing::ThrowsMessage<BrowserError>(HasSubstr("Runtime.evaluate: no answer in time")));

    const std::string path = std::getenv("PATH");
    setenv("PATH", "/nonexistent", 1);
    EXPECT_THAT([] { Browser missing; }, ::testing::ThrowsMessage<BrowserError>(HasSubstr("apt-get install chromium")));
    setenv("PATH", path.c_str(), 1);
}

// A box that holds its content exactly.
Box box(double x, double y, double w, double h) {
    return {"box", {x, y, w, h}, {x, y, w, h}};
}

TEST(Layout, FaultsAreEmptyBoxesSpilledContentAndSharedArea) {
    const Box collapsed{"collapsed", {0, 0, 10, 0}, {0, 0, 10, 40}};
    struct Row {
        std::vector<Box> boxes;
        std::size_t faults;
        const char* why;
    } rows[] = {
        {{box(0, 0, 10, 10), box(0, 10, 10, 10)}, 0, "stacked boxes that touch share no area"},
        {{box(0, 0, 10, 0)}, 1, "no height"},
        {{box(0, 0, 0, 10)}, 1, "no width"},
        {{box(0, 0, 10, 10), box(0, 9, 10, 10)}, 1, "one pixel of overlap"},
        {{box(0, 0, 50, 50), box(10, 10, 5, 5)}, 1, "a box inside another"},
        {{collapsed, box(0, 20, 10, 10)}, 2, "collapsed, its content running over the next box"},
        {{{"text", {0, 0, 10, 10}, {-0.5, 0, 10.9, 10}}}, 0, "sub-pixel overhang of glyphs"},
    };
    for (const Row& row : rows) EXPECT_EQ(layoutFaults(row.boxes).size(), row.faults) << row.why;
}

}  // namespace
}  // namespace tovi::browser
