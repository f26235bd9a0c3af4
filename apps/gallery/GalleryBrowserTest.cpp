// Loads the gallery in headless Chromium and checks what a person would see: every section laid
// out at the size of its content, none over another, each theme's column around all of its
// sections, every component drawn. The page and a screenshot of
// all of it are left in the build folder (gallery.html, gallery.png) to look at.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "Gallery.hpp"
#include "browser/Browser.hpp"
#include "browser/Layout.hpp"

namespace {

using namespace tovi::browser;

void write(const std::filesystem::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

TEST(Gallery, EverySectionIsDrawnAtItsSizeApartFromTheOthers) {
    const std::filesystem::path folder = TOVI_GALLERY_OUTPUT_DIR;
    write(folder / "gallery.html", tovi::gallery::renderGalleryHtml());
    Browser browser;
    browser.navigate("file://" + (folder / "gallery.html").string());
    write(folder / "gallery.png", browser.screenshot());

    const std::vector<Box> sections = boxesOf(browser, "[data-id^='section:']", "data-id");
    EXPECT_EQ(sections.size(), 24u) << "twelve sections under each theme";
    EXPECT_THAT(layoutFaults(sections), ::testing::IsEmpty());
    EXPECT_THAT(layoutFaults(boxesOf(browser, "[data-id^='column:']", "data-id")), ::testing::IsEmpty())
        << "each theme's column holds all its sections";

    // Each component, and the states that have a marker, on screen with a size.
    for (const char* selector :
         {"[data-view=ToviButton]", "[data-view=ToviActionView]", "[data-view=AlertView]",
          "[data-view=AlertArrowUpShape]", "[data-view=AlertArrowDownShape]", "[data-view=SheetHeader]",
          "[data-view=ToviErrorView]", "[data-view=FlipWrapper]", "[data-view=ToviImage]",
          "[data-view=CurrencyInputView]", ".nav", "button[disabled]", "[role=progressbar]",
          "[data-view=ToviTransactionView]", "[data-view=PaymentMethodRowView]", "[data-view=AboutTapToPayLineView]"}) {
        const std::vector<Box> found = boxesOf(browser, selector, "class");
        EXPECT_TRUE(std::ranges::any_of(found, [](const Box& b) { return b.border.width > 0 && b.border.height > 0; }))
            << selector << " is not drawn";
    }
}

}  // namespace
