#include <gtest/gtest.h>

#include "platform/view/Inspect.hpp"
#include "platform/view/View.hpp"

namespace platform::view {
namespace {

TEST(Inspect, FindsByTextIdTypeAndKind) {
    Node tree = VStack({Text("Title").font(Font::headline()),
                        HStack({Text("Left"), Text("Right").accessibilityIdentifier("right")}).viewType("Row"),
                        Button("Go", [] {})});
    auto screen = inspect(tree);
    EXPECT_EQ(screen.find("Title").font(), Font::headline());
    EXPECT_EQ(screen.find(by::id("right")).text(), "Right");
    EXPECT_EQ(screen.find(by::type("Row")).text(), "Left Right");
    EXPECT_EQ(screen.find(by::kind(Kind::button)).text(), "Go");
    EXPECT_EQ(screen.count(by::kind(Kind::text)), 4U);
    EXPECT_EQ(screen.find(by::textContaining("igh")).text(), "Right");
    EXPECT_EQ(screen.texts(), (std::vector<std::string>{"Title", "Left", "Right", "Go"}));
    EXPECT_FALSE(screen.has("Missing"));
}

TEST(Inspect, FailedFindNamesTheQueryAndShowsTheTree) {
    auto screen = inspect(VStack({Text("Only")}));
    try {
        (void)screen.find(by::id("nope"));
        FAIL() << "find should throw";
    } catch (const InspectError& e) {
        EXPECT_NE(std::string(e.what()).find("id #nope"), std::string::npos);
        EXPECT_NE(std::string(e.what()).find("text \"Only\""), std::string::npos);
    }
}

TEST(Inspect, EnvironmentIsReadFromTheNearestNodeAbove) {
    Color blue = Color::rgb(0, 0, 1);
    auto screen = inspect(VStack({Text("a"), Text("b").foregroundColor(Color::white())}).foregroundColor(blue));
    EXPECT_EQ(screen.find("a").foreground(), blue);
    EXPECT_EQ(screen.find("b").foreground(), Color::white());
    EXPECT_EQ(screen.find("a").font(), std::nullopt);
}

TEST(Inspect, DecorationsAndPresentationsAreSearchedOnlyWhenShown) {
    Node tree = Text("base")
                    .background(Text("behind"))
                    .overlay(Text("above"))
                    .sheet(true, Text("open sheet"), SheetOptions{})
                    .sheet(false, Text("closed sheet"), SheetOptions{})
                    .navigationDestination(true, Text("pushed"));
    auto screen = inspect(tree);
    EXPECT_EQ(screen.texts(), (std::vector<std::string>{"base", "behind", "above", "open sheet", "pushed"}));
}

TEST(Inspect, AsyncImageShowsPlaceholderUntilLoaded) {
    Node image = AsyncImage("https://example.com/a.png",
                            UrlImage("https://example.com/a.png").accessibilityIdentifier("art"), Text("placeholder"));
    EXPECT_TRUE(inspect(image).has("placeholder"));
    EXPECT_FALSE(inspect(image).has(by::id("art")));
    image.phase(LoadPhase::loaded);
    EXPECT_TRUE(inspect(image).has(by::id("art")));
}

TEST(InspectEvents, TapReachesTheNearestHandlerAboveUnlessBlocked) {
    int taps = 0;
    auto count = [&] { ++taps; };
    struct Case {
        const char* why;
        Node tree;
        bool runs;
    };
    const Case cases[] = {
        {"label inside a button", Button(Text("Go"), count), true},
        {"tap gesture on a stack", VStack({Text("Go")}).onTapGesture(count), true},
        {"disabled button", Button(Text("Go"), count).disabled(), false},
        {"disabled ancestor", VStack({Button(Text("Go"), count)}).disabled(), false},
        {"disabled below the handler does not block", Button(VStack({Text("Go").disabled()}), count), true},
        {"no hit testing", Button(Text("Go").allowsHitTesting(false), count), false},
        {"nothing handles taps", VStack({Text("Go")}), false},
    };
    for (const Case& c : cases) {
        taps = 0;
        bool ran = inspect(c.tree).find("Go").tap();
        EXPECT_EQ(ran, c.runs) << c.why;
        EXPECT_EQ(taps, c.runs ? 1 : 0) << c.why;
    }
}

TEST(InspectEvents, ToggleTypeRefreshAppearDismiss) {
    std::optional<bool> toggled;
    std::string typed;
    int appeared = 0;
    bool dismissed = false;
    std::function<void()> pendingDone;
    Node tree =
        ScrollView(VStack({Toggle(Text("Auto"), true, [&](bool on) { toggled = on; }),
                           HostedTextField(nullptr, "Amount").onTextChange([&](const std::string& t) { typed = t; }),
                           Text("row").onAppear([&] { ++appeared; })})
                       .onAppear([&] { ++appeared; }))
            .refreshable([&](std::function<void()> done) { pendingDone = std::move(done); })
            .sheet(true, Text("sheet"), SheetOptions{}, [&] { dismissed = true; });
    auto screen = inspect(tree);
    EXPECT_TRUE(screen.find(by::kind(Kind::toggle)).toggle());
    EXPECT_EQ(toggled, false);
    EXPECT_TRUE(screen.find(by::kind(Kind::textField)).typeText("12"));
    EXPECT_EQ(typed, "12");
    bool finished = false;
    EXPECT_TRUE(screen.refresh([&] { finished = true; }));
    ASSERT_TRUE(pendingDone);
    EXPECT_FALSE(finished);
    pendingDone();
    EXPECT_TRUE(finished);
    screen.appear();
    EXPECT_EQ(appeared, 2);
    EXPECT_TRUE(screen.dismiss());
    EXPECT_TRUE(dismissed);
}

TEST(InspectEvents, DisabledControlsIgnoreToggleAndTyping) {
    int calls = 0;
    Node tree = VStack({Toggle(Text("t"), false, [&](bool) { ++calls; }),
                        HostedTextField(nullptr).onTextChange([&](const std::string&) { ++calls; })})
                    .disabled();
    auto screen = inspect(tree);
    EXPECT_FALSE(screen.find(by::kind(Kind::toggle)).toggle());
    EXPECT_FALSE(screen.find(by::kind(Kind::textField)).typeText("x"));
    EXPECT_EQ(calls, 0);
}

}  // namespace
}  // namespace platform::view
