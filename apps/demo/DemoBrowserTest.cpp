// The demo as a person uses it, in headless Chromium: the home page, a screen opened live, keys
// typed into the secure card fields and a card tokenized against the sandbox vault, then
// failures injected from the panel (the vault's, the wallet's) and what the screens show of them, and last an amount
// typed into the custom amount field. Every step leaves a
// screenshot in the build folder (demo-*.png) and fails when a part of the page has no size or two parts overlap.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include "DemoServer.hpp"
#include "browser/Browser.hpp"
#include "browser/Layout.hpp"

namespace {

using namespace tovi::browser;
using namespace std::chrono_literals;

class DemoInBrowser : public ::testing::Test {
protected:
    void SetUp() override {
        auto started = tovi::demo::DemoServer::start({.port = 0});
        ASSERT_TRUE(started) << started.error();
        server = std::move(*started);
    }

    // Leaves the page as a picture and checks the parts a person sees.
    void step(const std::string& name) {
        std::ofstream(std::filesystem::path(TOVI_DEMO_OUTPUT_DIR) / ("demo-" + name + ".png"),
                      std::ios::binary | std::ios::trunc)
            << browser.screenshot();
        EXPECT_THAT(layoutFaults(boxesOf(browser, ".stage, .panel > section", "class")), ::testing::IsEmpty()) << name;
        // A styled button's pressed look (.p) is laid out only while it is pressed.
        for (const Box& part : boxesOf(browser, ".stage [data-view]:not(.p [data-view])", "data-view")) {
            EXPECT_TRUE(part.border.width > 0 && part.border.height > 0) << name << ": " << part.name << " has no size";
        }
    }

    // Clicks the middle of the first element that `selector` finds.
    void click(const std::string& selector) {
        const auto at =
            browser.evaluate("(() => { const r = document.querySelector(" + quoted(selector) +
                             ").getBoundingClientRect(); return [r.x + r.width / 2, r.y + r.height / 2]; })()");
        browser.click(at[0].get<double>(), at[1].get<double>());
    }

    // Waits until the expression is true; false after a few seconds.
    bool waitFor(const std::string& expression) {
        for (auto until = std::chrono::steady_clock::now() + 10s; std::chrono::steady_clock::now() < until;) {
            if (browser.evaluate("Boolean(" + expression + ")").get<bool>()) return true;
            std::this_thread::sleep_for(50ms);
        }
        return false;
    }

    static std::string quoted(const std::string& text) { return nlohmann::json(text).dump(); }

    std::unique_ptr<tovi::demo::DemoServer> server;
    Browser browser{{.width = 1000, .height = 960}};
};

TEST_F(DemoInBrowser, TypesACardTokenizesItAndShowsAnInjectedFailure) {
    browser.navigate(server->url() + "/");
    EXPECT_EQ(browser.evaluate("document.querySelectorAll('#screens a').length").get<int>(), 8);

    browser.navigate(server->url() + "/new?screen=cardFields");
    step("card-fields");
    EXPECT_TRUE(browser.evaluate("Boolean(document.querySelector('.stage button[data-view=ToviButton][disabled]'))")
                    .get<bool>())
        << "an empty card cannot be tokenized";
    click("[data-id=cardNumber] input");
    browser.insertText("4242424242424242");
    ASSERT_TRUE(waitFor("document.querySelector('.stage').textContent.includes('visa, complete •••• 4242')"))
        << browser.evaluate("document.querySelector('.stage').textContent");
    EXPECT_EQ(browser.evaluate("document.querySelector('[data-id=cardNumber] input').value").get<std::string>(),
              "4242 4242 4242 4242")
        << "the field shows what the phone's would: the number as its mask spaces it";
    click("[data-id=expiry] input");
    browser.insertText("1239");
    ASSERT_TRUE(waitFor("document.querySelector('.stage').textContent.includes('Expirycomplete')"));
    click("[data-id=cvc] input");
    browser.insertText("737");
    ASSERT_TRUE(waitFor("!document.querySelector('.stage button[data-view=ToviButton][disabled]')"))
        << "a complete card enables Tokenize: " << browser.evaluate("document.querySelector('.stage').textContent");
    click(".stage button[data-view=ToviButton]");
    ASSERT_TRUE(waitFor("document.querySelector('[data-id=status]').textContent.startsWith('Token ')"))
        << browser.evaluate("document.querySelector('[data-id=status]').textContent");
    step("tokenized");
    EXPECT_EQ(browser.evaluate("document.body.innerHTML.includes('4242424242424242')").get<bool>(), false)
        << "the page never holds the raw number";

    // The vault, scripted from the panel, refuses the next tokenize.
    browser.evaluate(
        "document.getElementById('operation').value = 'vault POST /tokenize';"
        "document.getElementById('effect').value = 'failNext';"
        "document.getElementById('value').value = 'The vault is down for the demo.'; true");
    click("#apply");
    click(".stage button[data-view=ToviButton]");
    ASSERT_TRUE(waitFor("document.querySelector('[data-id=status]').textContent.startsWith('The vault refused')"))
        << browser.evaluate("document.querySelector('[data-id=status]').textContent");
    step("vault-failure");

    browser.navigate(server->url() + "/new?screen=walletStates");
    ASSERT_TRUE(waitFor("document.querySelector('[data-id=balance]')"));
    browser.evaluate(
        "document.getElementById('operation').value = 'getCustomer';"
        "document.getElementById('effect').value = 'failAlways'; true");
    click("#apply");
    click("#reset");
    ASSERT_TRUE(waitFor("document.querySelector('.stage').textContent.includes('Please try again.')"));
    step("injected-failure");
    ASSERT_TRUE(waitFor("document.getElementById('console').textContent.includes('Error fetching user info')"))
        << "the panel shows the console line";

    browser.navigate(server->url() + "/new?screen=currencyEntry");
    ASSERT_TRUE(waitFor("document.querySelector(\"[data-id='currencyInput.amount'] input\")"));
    click("[data-id='currencyInput.amount'] input");
    ASSERT_TRUE(waitFor("document.activeElement.tagName === 'INPUT'")) << "nothing covers the field";
    browser.insertText("12.34");
    ASSERT_TRUE(waitFor("document.querySelector(\"[data-id='currencyInput.amount'] input\").value === '$12.34'"))
        << browser.evaluate("document.querySelector('.stage').textContent");
    ASSERT_TRUE(waitFor("document.querySelector(\"[data-id='currencyInput.hint']\").textContent === '+ $1.00 bonus'"))
        << "the sample range's first tier is reached";
    step("currency-entry");
}

TEST_F(DemoInBrowser, PicksASavedCardAndSelectsOneAddedWhileThePickerIsOpen) {
    browser.navigate(server->url() + "/new?screen=paymentPicker");
    const auto checkIn = [](const std::string& row) {
        return "document.querySelector('[data-id=\"paymentMethod." + row + "\"] [data-id=\"paymentMethod.selected\"]')";
    };
    ASSERT_TRUE(waitFor("document.querySelector('[data-id=\"paymentMethod.pm_sandbox_mc_4444\"]')"));
    EXPECT_FALSE(
        browser.evaluate("Boolean(document.querySelector('[data-id=\"paymentMethod.selected\"]'))").get<bool>())
        << "nothing is selected before a tap";
    click("[data-id=\"paymentMethod.pm_sandbox_mc_4444\"]");
    ASSERT_TRUE(waitFor(checkIn("pm_sandbox_mc_4444"))) << "the check mark moves to the tapped card";
    click("[data-id=\"paymentMethod.pm_sandbox_visa_4242\"]");
    ASSERT_TRUE(waitFor(checkIn("pm_sandbox_visa_4242")));
    EXPECT_FALSE(browser.evaluate("Boolean(" + checkIn("pm_sandbox_mc_4444") + ")").get<bool>()) << "one check mark";
    step("payment-picker");

    click("[data-id=\"paymentMethod.add\"]");
    ASSERT_TRUE(waitFor(checkIn("pm_added_1000"))) << "a card published while the picker is open is selected";
    step("payment-picker-added");
}

}  // namespace
