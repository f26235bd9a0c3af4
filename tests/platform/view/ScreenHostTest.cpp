#include <gtest/gtest.h>

#include <thread>

#include "platform/Published.hpp"
#include "platform/testing/ManualMainQueue.hpp"
#include "platform/testing/RecordingTransport.hpp"
#include "platform/view/ScreenHost.hpp"
#include "platform/view/View.hpp"

namespace platform::view {
namespace {

// A counter row: its count is view state, so it shows whether state followed the row.
Node counterRow(Scope& s, const std::string& label) {
    auto count = s.state("count", 0);
    return Button(label + " " + std::to_string(count.get()), [count] { count.set(count.get() + 1); });
}

struct HostTest : ::testing::Test {
    ManualMainQueueScope main;

    // Runs the posted rebuilds.
    void settle() { main->runUntilIdle(); }
};

TEST_F(HostTest, StateSurvivesRebuildsAndIsDroppedWhenItsViewLeaves) {
    ScreenHost host([](Scope& s) {
        auto shown = s.state("shown", true);
        return VStack({Button("toggle", [shown] { shown.set(!shown.get()); }),
                       shown.get() ? s.child("Row", [](Scope& row) { return counterRow(row, "row"); }) : Node{}});
    });
    ASSERT_TRUE(host.tap(HostTarget::text("row 0")));
    ASSERT_TRUE(host.tap(HostTarget::text("row 0")));  // the tree the user saw: not yet rebuilt
    settle();
    ASSERT_TRUE(host.tap(HostTarget::text("row 2")));
    settle();
    EXPECT_TRUE(host.find(HostTarget::text("row 3")));

    ASSERT_TRUE(host.tap(HostTarget::text("toggle")));  // the row leaves ...
    settle();
    ASSERT_TRUE(host.tap(HostTarget::text("toggle")));  // ... and comes back fresh
    settle();
    EXPECT_TRUE(host.find(HostTarget::text("row 0")));
}

TEST_F(HostTest, KeyedRowsKeepTheirStateWhenRowsAreInsertedAbove) {
    ScreenHost host([](Scope& s) {
        auto rows = s.state("rows", std::vector<std::string>{"b"});
        std::vector<Node> nodes{Button("insert", [rows] {
            auto next = rows.get();
            next.insert(next.begin(), "a");
            rows.set(next);
        })};
        for (const std::string& key : rows.get()) {
            nodes.push_back(s.child("Row", key, [&](Scope& row) { return counterRow(row, key); }));
        }
        return VStack(std::move(nodes));
    });
    ASSERT_TRUE(host.tap(HostTarget::text("b 0")));
    settle();
    ASSERT_TRUE(host.tap(HostTarget::text("insert")));
    settle();
    EXPECT_TRUE(host.find(HostTarget::text("a 0")));
    EXPECT_TRUE(host.find(HostTarget::text("b 1")));
}

struct Model : ObservableObject {
    Published<int> value{*this, 0, "value"};
};

TEST_F(HostTest, AnOwnedObjectIsMadeOnceAndItsChangesCoalesceIntoOneRebuild) {
    int made = 0;
    std::shared_ptr<Model> model;
    ScreenHost host([&](Scope& s) {
        model = s.stateObject<Model>("model", [&] {
            ++made;
            return std::make_shared<Model>();
        });
        return Text("value " + std::to_string(model->value.get()));
    });
    (void)host.tree();
    for (int i = 1; i <= 10; ++i) model->value = i;
    EXPECT_TRUE(host.rebuildPending());
    settle();
    EXPECT_EQ(host.generation(), 2U);
    EXPECT_EQ(made, 1);
    EXPECT_TRUE(host.find(HostTarget::text("value 10")));
}

TEST_F(HostTest, AnimatedChangesAreRecordedOnTheChangedView) {
    ScreenHost host([](Scope& s) {
        auto offset = s.state("cardSlideOffset", 0.0);
        return Text(std::to_string(offset.get())).onTapGesture([offset] {
            withAnimation(Animation::easeInOut(0.5), [&] { offset.set(80); });
        });
    });
    ASSERT_TRUE(host.tap(HostTarget::path("")));
    settle();
    EXPECT_EQ(host.tree()->animations, (std::vector<AnimationTag>{{Animation::easeInOut(0.5), "cardSlideOffset"}}));
}

TEST_F(HostTest, AppearAndDisappearFollowTheTree) {
    std::vector<std::string> log;
    ScreenHost host([&](Scope& s) {
        auto open = s.state("open", false);
        return VStack({Button("open", [open] { open.set(!open.get()); }),
                       open.get() ? Text("detail").onAppear([&] { log.push_back("appear"); }).onDisappear([&] {
                           log.push_back("disappear");
                       })
                                  : Node{}});
    });
    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(host.tap(HostTarget::text("open")));
        settle();
        (void)host.tree();
    }
    EXPECT_EQ(log, (std::vector<std::string>{"appear", "disappear"}));
}

TEST_F(HostTest, ATextFieldKeepsFocusAndCaretAcrossTheRebuildItsOwnEventCauses) {
    ScreenHost host([](Scope& s) {
        auto typed = s.state("typed", std::string());
        auto field = s.stateObject<TextField>("field", [typed] {
            auto f = std::make_shared<TextField>();
            f->addAction(ControlEvent::editingChanged, [typed](TextField& tf) { typed.set(tf.text().value_or("")); });
            return f;
        });
        return VStack({HostedTextField(field).accessibilityIdentifier("name"), Text("echo " + typed.get())});
    });
    ASSERT_TRUE(host.type(HostTarget::id("name"), "ab"));
    settle();
    ASSERT_TRUE(host.selectRange(HostTarget::id("name"), TextRange{1, 0}));
    ASSERT_TRUE(host.type(HostTarget::id("name"), "X"));
    settle();
    EXPECT_TRUE(host.find(HostTarget::text("echo aXb")));
    const auto& field = *host.find(HostTarget::id("name"))->props<TextFieldProps>().field;
    EXPECT_TRUE(field.isFirstResponder());
    EXPECT_EQ(field.selectedTextRange(), (TextRange{2, 0}));
}

TEST_F(HostTest, ImagesLoadOnceAndAFailureOrABadUrlKeepsThePlaceholder) {
    RecordingTransport http(&main.queue());
    http.setHandler([](const HttpRequest& request) -> HttpResult {
        HttpResponse response;
        response.status = request.url.ends_with("ok.png") ? 200 : 404;
        response.body = "png";
        return response;
    });
    auto image = [](const std::string& url) {
        return AsyncImage(url, Text("loaded " + url), Text("placeholder " + url));
    };
    ScreenHost host(
        [&](Scope&) {
            return VStack({image("https://x/ok.png"), image("https://x/missing.png"), image("::")});
        },
        HostOptions{.images = &http});
    (void)host.tree();
    settle();
    settle();
    EXPECT_TRUE(host.find(HostTarget::text("loaded https://x/ok.png")));
    EXPECT_TRUE(host.find(HostTarget::text("placeholder https://x/missing.png")));
    EXPECT_TRUE(host.find(HostTarget::text("placeholder ::")));
    EXPECT_EQ(http.requestCount(), 2U);
}

TEST_F(HostTest, ActionsOnMissingDisabledOrWrongNodesAnswerErrors) {
    bool tapped = false;
    ScreenHost host([&](Scope&) {
        return VStack(
            {Button("off", [&] { tapped = true; }).disabled(), Text("plain"), Button("on", [&] { tapped = true; })});
    });
    struct Row {
        HostResult result;
        HostErrorCode code;
    };
    const Row rows[] = {
        {host.tap(HostTarget::text("off")), HostErrorCode::disabled},
        {host.tap(HostTarget::text("plain")), HostErrorCode::notHandled},
        {host.tap(HostTarget::id("nothing")), HostErrorCode::notFound},
        {host.tap(HostTarget::path("9")), HostErrorCode::notFound},
        {host.tap(HostTarget::path("0/x")), HostErrorCode::notFound},
        {host.type(HostTarget::text("on"), "a"), HostErrorCode::wrongKind},
        {host.toggle(HostTarget::text("on")), HostErrorCode::wrongKind},
        {host.dismissSheet(), HostErrorCode::nothingShown},
    };
    for (const Row& row : rows) {
        ASSERT_FALSE(row.result);
        EXPECT_EQ(row.result.error().code, row.code) << row.result.error().message;
    }
    EXPECT_FALSE(tapped);
    EXPECT_TRUE(host.tap(HostTarget::path("2")));
}

TEST_F(HostTest, RefreshHoldsTheIndicatorUntilTheActionEnds) {
    std::function<void()> finish;
    ScreenHost host([&](Scope&) {
        return ScrollView(Text("list")).refreshable([&](std::function<void()> done) { finish = std::move(done); });
    });
    ASSERT_TRUE(host.refresh(HostTarget::path("")));
    EXPECT_TRUE(host.isRefreshing());
    finish();
    finish();  // a second call changes nothing
    EXPECT_FALSE(host.isRefreshing());
}

using HostDeathTest = HostTest;

TEST_F(HostDeathTest, APublishFromABackgroundThreadNamesTheProperty) {
    auto model = std::make_shared<Model>();
    ScreenHost host([&](Scope& s) {
        s.observe(*model);
        return Text(std::to_string(model->value.get()));
    });
    (void)host.tree();
    EXPECT_DEATH(std::thread([&] { model->value = 1; }).join(),
                 "^ObservableObject: value changed on a background thread; publish changes from the main queue\n");
}

}  // namespace
}  // namespace platform::view
