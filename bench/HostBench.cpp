// A live screen through its host, at keystroke rate.
//
// The screen has about 300 nodes: sixty history-like rows and a secure card number field whose
// every change is kept in view state, so that each key causes a real rebuild.
//
// BM_HostKeystroke: one key typed into the card number field through the host (dispatch, the
// element's mask and events, the invalidation), the rebuild it causes, and the HTML render of
// the new tree. Target: median at most 1 ms. The counters dispatch, rebuild and render give the
// time of each step per key.
//
// BM_HostRebuild: one state change in the same screen, then rebuild and render. Target: median
// at most 1 ms.

#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>
#include <string>

#include "KorvaneElements/CardNumberUITextField.hpp"
#include "KorvaneElements/Telemetry.hpp"
#include "platform/testing/DroppingTransport.hpp"
#include "platform/testing/ManualMainQueue.hpp"
#include "platform/view/HtmlRenderer.hpp"
#include "platform/view/ScreenHost.hpp"
#include "platform/view/View.hpp"

namespace {

using namespace platform::view;
using Clock = std::chrono::steady_clock;

Node historyRows(int changes) {
    std::vector<Node> rows;
    for (int i = 0; i < 60; ++i) {
        rows.push_back(HStack({Text("Coffee #" + std::to_string(i)), Spacer(),
                               Text("$" + std::to_string(i + changes) + ".50"), Divider()})
                           .padding(Edge::horizontal, 16));
    }
    return VStack(std::move(rows), Alignment::leading, 4);
}

Body keystrokeScreen() {
    return [](Scope& s) {
        auto typed = s.state("typed", 0);
        auto field = s.stateObject<korvane::elements::CardNumberUITextField>("cardNumber", [typed] {
            auto number = std::make_shared<korvane::elements::CardNumberUITextField>();
            number->addAction(platform::ControlEvent::editingChanged,
                              [typed](platform::TextField&) { typed.set(typed.get() + 1); });
            return number;
        });
        return ScrollView(VStack({HostedTextField(field).accessibilityIdentifier("number"),
                                  Text("keys " + std::to_string(typed.get())), historyRows(typed.get())}));
    };
}

double seconds(Clock::duration d) {
    return std::chrono::duration<double>(d).count();
}

void BM_HostKeystroke(benchmark::State& state) {
    korvane::elements::setTelemetryEnabled(false);
    platform::ManualMainQueueScope main;
    ScreenHost host(keystrokeScreen());
    (void)host.tree();
    const HostTarget number = HostTarget::id("number");
    double dispatch = 0;
    double rebuild = 0;
    double render = 0;
    int inField = 0;
    for (auto _ : state) {
        if (inField == 16) {
            state.PauseTiming();
            (void)host.deleteBackward(number, 19);
            main->runUntilIdle();
            inField = 0;
            state.ResumeTiming();
        }
        const auto t0 = Clock::now();
        if (!host.type(number, "4")) state.SkipWithError("the key did not reach the field");
        const auto t1 = Clock::now();
        main->runUntilIdle();
        const auto t2 = Clock::now();
        benchmark::DoNotOptimize(renderHtml(host.tree()));
        const auto t3 = Clock::now();
        ++inField;
        dispatch += seconds(t1 - t0);
        rebuild += seconds(t2 - t1);
        render += seconds(t3 - t2);
    }
    const auto n = static_cast<double>(state.iterations());
    state.counters["dispatch"] = dispatch / n;
    state.counters["rebuild"] = rebuild / n;
    state.counters["render"] = render / n;
    state.counters["nodes"] =
        static_cast<double>(inspect(host.tree()).count(Query("any", [](const Node&) { return true; })));
}
BENCHMARK(BM_HostKeystroke)->Unit(benchmark::kMicrosecond);

void BM_HostRebuild(benchmark::State& state) {
    platform::ManualMainQueueScope main;
    ScreenHost host([](Scope& s) {
        auto changes = s.state("changes", 0);
        return ScrollView(
            VStack({Button("change", [changes] { changes.set(changes.get() + 1); }), historyRows(changes.get())}));
    });
    (void)host.tree();
    const HostTarget button = HostTarget::text("change");
    for (auto _ : state) {
        if (!host.tap(button)) state.SkipWithError("the tap found no button");
        main->runUntilIdle();
        benchmark::DoNotOptimize(renderHtml(host.tree()));
    }
}
BENCHMARK(BM_HostRebuild)->Unit(benchmark::kMicrosecond);

}  // namespace
