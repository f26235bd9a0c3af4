#include "platform/Observable.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace {

using platform::AnyCancellable;
using platform::CancellableSet;
using platform::PassthroughSubject;
using platform::Published;

TEST(Published, SubscribersSeeTheNewValueWhileTheOldOneIsStillStored) {
    Published<int> count(1);
    std::vector<std::pair<int, int>> seen;  // (delivered, stored at that moment)
    auto sub = count.publisher().sink([&](const int& v) { seen.emplace_back(v, count.get()); });
    count.set(2);
    count = 3;
    EXPECT_EQ(seen, (std::vector<std::pair<int, int>>{{1, 1}, {2, 1}, {3, 2}}));
    EXPECT_EQ(*count, 3);
}

TEST(Published, OwnersWillChangeFiresBeforeEveryBoundPropertyChange) {
    struct ViewModel : platform::ObservableObject {
        Published<std::string> title{*this, "old"};
        Published<bool> busy{*this, false};
        Published<int> unbound{0};
    } vm;
    std::vector<std::string> seen;
    auto sub = vm.objectWillChange().sink([&](const platform::Signal&) { seen.push_back(vm.title.get()); });
    EXPECT_TRUE(seen.empty()) << "will-change never replays";
    vm.title = "new";
    vm.busy = true;
    vm.unbound = 5;
    EXPECT_EQ(seen, (std::vector<std::string>{"old", "new"}));
}

TEST(Published, SetterHoldsThePropertyWeakly) {
    std::function<void(int)> set;
    {
        Published<int> value(0);
        set = value.setter();
        set(4);
        EXPECT_EQ(value.get(), 4);
    }
    set(5);  // no crash, no effect
}

TEST(PassthroughSubject, NeverReplaysAndLateSubscribersMissTheCurrentSend) {
    PassthroughSubject<int> subject;
    subject.send(1);
    std::vector<std::string> seen;
    CancellableSet subs;
    subject
        .sink([&](const int& v) {
            seen.push_back("a" + std::to_string(v));
            if (v == 2) {
                subject.sink([&](const int& w) { seen.push_back("late" + std::to_string(w)); }).store(subs);
            }
        })
        .store(subs);
    subject.send(2);
    subject.send(3);
    EXPECT_EQ(seen, (std::vector<std::string>{"a2", "a3", "late3"}));
}

TEST(AnyCancellable, EndsDeliveryOnDestructionCancelMoveAndSetClear) {
    PassthroughSubject<int> subject;
    int received = 0;
    auto counter = [&](const int&) { ++received; };

    {
        auto scoped = subject.sink(counter);
        subject.send(0);
    }
    auto cancelled = subject.sink(counter);
    cancelled.cancel();
    auto replaced = subject.sink(counter);
    replaced = subject.sink(counter);  // the first one ends here
    AnyCancellable moved = std::move(replaced);
    EXPECT_FALSE(replaced.isActive());
    CancellableSet set;
    subject.sink(counter).store(set);
    set.cancelAll();

    received = 0;
    subject.send(1);
    EXPECT_EQ(received, 1) << "only `moved` should still be subscribed";
    EXPECT_EQ(subject.subscriberCount(), 1u);
}

TEST(AnyCancellable, SourceGoneFirstIsSafeAndReleasesClosures) {
    auto captured = std::make_shared<int>(0);
    AnyCancellable sub;
    {
        PassthroughSubject<int> subject;
        sub = subject.sink([captured](const int&) {});
        EXPECT_EQ(captured.use_count(), 2);
    }
    EXPECT_EQ(captured.use_count(), 1) << "the dead source must release its subscribers' closures";
    EXPECT_TRUE(sub.isActive());
    sub.cancel();  // no-op
}

TEST(Reentrancy, CancellingDuringSendSkipsTheCancelledEvenLaterInTheSameSend) {
    PassthroughSubject<int> subject;
    std::vector<std::string> seen;
    AnyCancellable first, second, third;
    first = subject.sink([&](const int& v) {
        seen.push_back("first" + std::to_string(v));
        first.cancel();  // itself: its closure is running right now
        third.cancel();  // a later one of the same send
    });
    second = subject.sink([&](const int& v) { seen.push_back("second" + std::to_string(v)); });
    third = subject.sink([&](const int& v) { seen.push_back("third" + std::to_string(v)); });
    subject.send(1);
    subject.send(2);
    EXPECT_EQ(seen, (std::vector<std::string>{"first1", "second1", "second2"}));
}

TEST(Reentrancy, SubscriberMayDestroyTheSourceAndItsOwnCancellable) {
    struct Owner {
        PassthroughSubject<int> subject;
        CancellableSet subs;
    };
    auto owner = std::make_unique<Owner>();
    int calls = 0;
    owner->subject
        .sink([&](const int&) {
            ++calls;
            owner.reset();  // destroys the subject mid-send and the set holding this subscription
        })
        .store(owner->subs);
    owner->subject.sink([&](const int&) { ++calls; }).store(owner->subs);
    owner->subject.send(1);
    EXPECT_EQ(owner, nullptr);
    EXPECT_EQ(calls, 1) << "the second subscription was cancelled with its owner";
}

TEST(Reentrancy, NestedSetNotifiesEveryoneAndTheOuterValueIsStoredLast) {
    Published<int> value(0);
    std::vector<int> seen;
    auto echo = value.publisher().sink([&](const int& v) {
        seen.push_back(v);
        if (v == 1) value.set(2);
    });
    value.set(1);
    EXPECT_EQ(seen, (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(value.get(), 1);
}

TEST(Operators, MapRemoveDuplicatesAndAssign) {
    Published<int> cents(100);
    Published<std::string> label{""};
    std::vector<std::string> labels;
    auto watch = label.publisher().sink([&](const std::string& s) { labels.push_back(s); });
    auto binding = cents.publisher()
                       .map([](int c) { return c >= 500; })
                       .removeDuplicates()
                       .map([](bool big) { return std::string(big ? "big" : "small"); })
                       .assign(label);
    cents = 200;
    cents = 600;
    cents = 700;
    cents = 100;
    EXPECT_EQ(labels, (std::vector<std::string>{"", "small", "big", "small"}));
    EXPECT_EQ(label.get(), "small");
}

TEST(Operators, AssignAfterTargetIsGoneDropsValues) {
    Published<int> source(0);
    AnyCancellable binding;
    {
        Published<long> target(0L);
        binding = source.publisher().assign(target);
        source = 3;
        EXPECT_EQ(target.get(), 3L);
    }
    source = 4;  // must not touch the destroyed target
}

TEST(CombineLatest, EmitsNothingUntilEveryInputHasAValueThenOnEachChange) {
    PassthroughSubject<int> amount;
    PassthroughSubject<std::string> method;
    std::vector<std::tuple<int, std::string>> seen;
    auto sub = platform::combineLatest(amount.publisher(), method.publisher())
                   .sink([&](const std::tuple<int, std::string>& t) { seen.push_back(t); });
    amount.send(1);
    amount.send(2);
    EXPECT_TRUE(seen.empty());
    method.send("visa");
    amount.send(3);
    method.send("amex");
    using Seen = std::vector<std::tuple<int, std::string>>;
    EXPECT_EQ(seen, (Seen{{2, "visa"}, {3, "visa"}, {3, "amex"}}));
}

TEST(CombineLatest, ThreePublishedInputsWithTransformAssignedToAFlag) {
    Published<int> amount(0);
    Published<std::optional<std::string>> method(std::nullopt);
    Published<bool> autoReload(false);
    Published<bool> ctaEnabled(false);
    std::vector<bool> flags;
    auto watch = ctaEnabled.publisher().sink([&](const bool& b) { flags.push_back(b); });
    auto binding = platform::combineLatest(
                       amount.publisher(), method.publisher(), autoReload.publisher(),
                       [](int a, const std::optional<std::string>& m, bool on) { return a > 0 && m.has_value() && on; })
                       .assign(ctaEnabled);
    EXPECT_EQ(flags, (std::vector<bool>{false, false})) << "one emission once all three replayed";
    amount = 10;
    method = std::string("pm_1");
    autoReload = true;
    EXPECT_TRUE(ctaEnabled.get());
    binding.cancel();
    amount = 0;
    EXPECT_TRUE(ctaEnabled.get()) << "cancelled binding must not write";
}

TEST(CombineLatest, CancellingReleasesTheCombinedStateAndDownstreamClosure) {
    PassthroughSubject<int> a;
    PassthroughSubject<int> b;
    auto captured = std::make_shared<int>(0);
    auto sub = platform::combineLatest(a.publisher(), b.publisher()).sink([captured](const auto&) {});
    EXPECT_EQ(a.subscriberCount(), 1u);
    EXPECT_GT(captured.use_count(), 1);
    sub.cancel();
    EXPECT_EQ(a.subscriberCount(), 0u);
    EXPECT_EQ(b.subscriberCount(), 0u);
    EXPECT_EQ(captured.use_count(), 1);
}

}  // namespace
