#pragma once
// Browser: a headless Chromium driven over its DevTools protocol, for tests that use a page as a
// person would: load it, read the DOM, click, type and take screenshots.
//
//   tovi::browser::Browser browser;                    // starts chromium with one blank tab
//   browser.navigate("file:///tmp/page.html");        // returns once the page has loaded
//   int images = browser.evaluate("document.images.length").get<int>();
//   browser.click(40, 120);
//   browser.insertText("4242");
//   browser.pressKey("Enter");
//   std::string png = browser.screenshot();           // the whole page, beyond the viewport
//
// Each Browser runs its own chromium with a fresh profile in a temporary folder; the destructor
// kills chromium's whole process group and removes the folder. Every wait has a deadline
// (BrowserOptions::timeout). Any failure (chromium missing or gone, a deadline passed, a
// protocol error, an exception thrown by page script) throws BrowserError with a message that
// names the step, so a test body stays a list of steps and fails with that message.
//
// Thread safety: none; one thread drives one Browser.

#include <chrono>
#include <memory>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

namespace tovi::browser {

struct BrowserError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct BrowserOptions {
    // The viewport, in CSS pixels.
    int width = 1280;
    int height = 900;
    // The longest any one step (start, load, command, event) may take.
    std::chrono::milliseconds timeout{30'000};
};

class Browser {
public:
    explicit Browser(BrowserOptions options = {});
    ~Browser();
    Browser(const Browser&) = delete;
    Browser& operator=(const Browser&) = delete;

    // Loads `url` as a new document and returns after its load event. Throws when the page
    // cannot be loaded.
    void navigate(const std::string& url);

    // The value of a JavaScript expression, as JSON (a promise is awaited; undefined is null).
    nlohmann::json evaluate(const std::string& expression);

    // A left click at a point of the viewport.
    void click(double x, double y);
    // Types `text` into the focused element, as an input method would.
    void insertText(const std::string& text);
    // Presses and releases one key: Enter, Tab, Backspace, Delete, Escape or an arrow key
    // (ArrowLeft, ArrowRight, ArrowUp, ArrowDown).
    void pressKey(const std::string& key);

    // Replaces the longest time one step may take from now on.
    void setTimeout(std::chrono::milliseconds timeout);

    // A PNG of the whole page, including what lies beyond the viewport.
    [[nodiscard]] std::string screenshot();

    // One DevTools command on the tab; its result.
    nlohmann::json send(const std::string& method, nlohmann::json params = nlohmann::json::object());

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace tovi::browser
