// The secure card elements at keystroke rate.
//
// BM_TypeCardNumber types a visa number key by key into a number field linked to a code field,
// with telemetry on (every event is converted and serialised) through a transport that drops
// the posts. Each key runs the mask, brand detection (twice), Luhn, two log lines and the code
// field's mask update. Target: at most 50 us per keystroke; read the "keystroke" counter (time
// per key) or items_per_second.
//
// BM_EditMiddle deletes and retypes one digit in the middle of a complete visa number in the
// same linked set-up: each edit regroups the digits behind the caret and places the caret after
// the same digit. Target: as for a keystroke; read the "edit" counter.
//
// BM_DetectBrand runs brand detection over a mix of prefixes and lengths that reach every kind
// of identifier: single prefixes, ranges, long six- and eight-digit ones, and no match.

#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>

#include "KorvaneElements/CardBrand.hpp"
#include "KorvaneElements/CardNumberUITextField.hpp"
#include "KorvaneElements/CardVerificationCodeUITextField.hpp"
#include "KorvaneElements/Telemetry.hpp"
#include "platform/testing/DroppingTransport.hpp"
#include "platform/testing/ManualMainQueue.hpp"
#include "platform/view/TextFieldDriver.hpp"

namespace {

using namespace korvane::elements;

using platform::DroppingTransport;

// Telemetry on, into the dropping transport, for the scope.
struct DroppedTelemetry {
    DroppedTelemetry() : previous(telemetrySession()) {
        setTelemetryEnabled(true);
        setTelemetrySession(transport);
    }
    ~DroppedTelemetry() { setTelemetrySession(previous); }

    std::shared_ptr<DroppingTransport> transport = std::make_shared<DroppingTransport>();
    std::shared_ptr<platform::HttpSession> previous;
};

constexpr std::string_view kCardNumber = "4242424242424242";

void BM_TypeCardNumber(benchmark::State& state) {
    DroppedTelemetry telemetry;
    for (auto _ : state) {
        state.PauseTiming();
        auto number = std::make_shared<CardNumberUITextField>();
        auto cvc = std::make_shared<CardVerificationCodeUITextField>();
        cvc->setConfig(CardVerificationCodeOptions{.cardNumberUITextField = number});
        platform::TextFieldDriver user(*number);
        user.tap();
        state.ResumeTiming();

        for (std::size_t i = 0; i < kCardNumber.size(); ++i) {
            user.type(kCardNumber.substr(i, 1));
        }

        state.PauseTiming();
        if (!number->metadata().complete || !cvc->cvcMask() || cvc->cvcMask()->size() != 3) {
            state.SkipWithError("the typed number did not end complete and linked");
        }
        user.leave();
        state.ResumeTiming();
    }
    const auto keys = static_cast<std::int64_t>(kCardNumber.size());
    state.SetItemsProcessed(state.iterations() * keys);
    // Seconds per keystroke (shown with a unit prefix, e.g. "3.1u" is 3.1 us).
    state.counters["keystroke"] = benchmark::Counter(
        static_cast<double>(keys), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    state.counters["posts_per_key"] =
        static_cast<double>(telemetry.transport->taskCount()) / static_cast<double>(state.iterations() * keys);
}
BENCHMARK(BM_TypeCardNumber)->Unit(benchmark::kMicrosecond);

void BM_EditMiddle(benchmark::State& state) {
    DroppedTelemetry telemetry;
    auto number = std::make_shared<CardNumberUITextField>();
    auto cvc = std::make_shared<CardVerificationCodeUITextField>();
    cvc->setConfig(CardVerificationCodeOptions{.cardNumberUITextField = number});
    platform::TextFieldDriver user(*number);
    user.type(kCardNumber);
    constexpr std::size_t kMiddle = 7;  // after "4242 42"
    for (auto _ : state) {
        user.placeCaret(kMiddle);
        user.deleteBackward();
        user.type("2");
    }
    if (!number->metadata().complete || number->selectedTextRange().location != kMiddle) {
        state.SkipWithError("the retyped number did not end complete with the caret after the digit");
    }
    user.leave();
    constexpr std::int64_t kEdits = 2;
    state.SetItemsProcessed(state.iterations() * kEdits);
    state.counters["edit"] = benchmark::Counter(
        static_cast<double>(kEdits), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_EditMiddle)->Unit(benchmark::kMicrosecond);

void BM_DetectBrand(benchmark::State& state) {
    DroppedTelemetry telemetry;
    CardBrand::addCardBrands(CardBrand::DefaultCardBrands());
    // Partial numbers as they appear while typing, and complete ones of several brands.
    constexpr std::array<std::string_view, 16> kNumbers{
        "4",
        "42",
        "4242424242424242",
        "5555555555554444",
        "2223003122003222",
        "378282246310005",
        "36227206271667",
        "6011111111111117",
        "3566002020360505",
        "6200000000000005",
        "6221260000000000",
        "5067",
        "6504850000000000",
        "2200000000000004",
        "6373742300000000",
        "9999999999999999",
    };
    std::size_t matched = 0;
    for (auto _ : state) {
        for (std::string_view text : kNumbers) {
            CardBrandResults results = CardBrand::getCardBrand(text);
            matched += results.bestMatchCardBrand ? 1 : 0;
            benchmark::DoNotOptimize(results);
        }
    }
    benchmark::DoNotOptimize(matched);
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kNumbers.size()));
    state.counters["detection"] =
        benchmark::Counter(static_cast<double>(kNumbers.size()),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_DetectBrand)->Unit(benchmark::kMicrosecond);

}  // namespace
