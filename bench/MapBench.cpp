// The dynamic JSON map under a large object: building it key by key, and decoding it, against
// the JSON library parsing the same document. Without the map's index, building was quadratic.

#include <benchmark/benchmark.h>

#include <nlohmann/json.hpp>

#include <stdexcept>
#include <string>

#include "AnyCodable/JsonReader.hpp"
#include "AnyCodable/Value.hpp"

namespace {

constexpr int kKeys = 100'000;

std::string keyOf(int i) {
    return "key" + std::to_string(i);
}

const std::string& largeObjectJson() {
    static const std::string text = [] {
        std::string out = "{";
        for (int i = 0; i < kKeys; ++i) out += "\"" + keyOf(i) + "\":" + std::to_string(i) + ",";
        out.back() = '}';
        return out;
    }();
    return text;
}

void BM_BuildLargeMap(benchmark::State& state) {
    for (auto _ : state) {
        anycodable::Map map;
        for (int i = 0; i < kKeys; ++i) map.set(keyOf(i), i);
        if (map.size() != kKeys) throw std::runtime_error("keys lost");
        benchmark::DoNotOptimize(map);
    }
    state.SetItemsProcessed(state.iterations() * kKeys);
}
BENCHMARK(BM_BuildLargeMap)->Unit(benchmark::kMillisecond);

void BM_ParseLargeObjectJson(benchmark::State& state) {
    const std::string& text = largeObjectJson();
    for (auto _ : state) {
        auto tree = nlohmann::json::parse(text);
        benchmark::DoNotOptimize(tree);
    }
    state.SetItemsProcessed(state.iterations() * kKeys);
}
BENCHMARK(BM_ParseLargeObjectJson)->Unit(benchmark::kMillisecond);

void BM_ReadLargeObjectJson(benchmark::State& state) {
    const std::string& text = largeObjectJson();
    for (auto _ : state) {
        auto value = anycodable::readJson(text);
        if (!value || value->get<anycodable::Map>()->size() != kKeys) throw std::runtime_error("keys lost");
        benchmark::DoNotOptimize(value);
    }
    state.SetItemsProcessed(state.iterations() * kKeys);
}
BENCHMARK(BM_ReadLargeObjectJson)->Unit(benchmark::kMillisecond);

}  // namespace
