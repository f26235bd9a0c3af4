// The dollars entry field at keystroke rate.
//
// BM_TypeAmount types "1234.56" key by key into the custom amount field through the driver, each
// key followed by the main-queue turn that places the caret. Each key formats the typed text with
// the shared currency formatter, stores and reads back the bound value, and regroups the text.
// Target: at most 30 us per keystroke; read the "keystroke" counter (time per key) of the median.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <optional>
#include <string_view>

#include "ToviUI/CurrencyTextFieldSwiftUIWrapper.hpp"
#include "platform/testing/ManualMainQueue.hpp"
#include "platform/testing/ScopedLocale.hpp"
#include "platform/view/TextFieldDriver.hpp"

namespace {

constexpr std::string_view kAmount = "1234.56";

void BM_TypeAmount(benchmark::State& state) {
    platform::ScopedLocale locale("en_US", "UTC");
    platform::ManualMainQueueScope main;
    std::optional<double> value;
    tovi::CurrencyTextFieldSwiftUIWrapper wrapper{
        .value = {[&] { return value; }, [&](std::optional<double> v) { value = v; }},
        .alwaysShowFractions = true,
        .currencySymbol = "$"};
    for (auto _ : state) {
        state.PauseTiming();
        value.reset();
        auto coordinator = wrapper.makeCoordinator();
        auto field = wrapper.makeUIView(*coordinator);
        platform::TextFieldDriver user(*field);
        user.tap();
        state.ResumeTiming();

        for (std::size_t i = 0; i < kAmount.size(); ++i) {
            user.type(kAmount.substr(i, 1));
            main->runUntilIdle();
        }

        state.PauseTiming();
        if (field->text() != "$1,234.56" || value != 1234.56) state.SkipWithError("the amount did not end typed");
        user.leave();
        main->runUntilIdle();
        state.ResumeTiming();
    }
    const auto keys = static_cast<std::int64_t>(kAmount.size());
    state.SetItemsProcessed(state.iterations() * keys);
    state.counters["keystroke"] = benchmark::Counter(
        static_cast<double>(keys), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_TypeAmount)->Unit(benchmark::kMicrosecond)->Repetitions(5)->ReportAggregatesOnly(true);

}  // namespace
