// A vault answer decoded into every vault model, written back and read again. The input is
// "<ModelName>\n<json>" to aim at one model, or any bytes, the first of which picks one. What
// a model decodes, it encodes; what it encodes, it decodes; and the second writing is the
// first one byte for byte (the first decoding may normalise: dates keep milliseconds).
// The model list is generated from Korvane's headers (fuzz/CMakeLists.txt), so a new model is
// fuzzed without being named here.

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <tuple>
#include <utility>

#include "Korvane/JSONDecoder.hpp"
#include "Korvane/JSONEncoder.hpp"
#include "VaultModels.hpp"

namespace {

using RoundTrip = void (*)(std::string_view);

struct Target {
    std::string_view name;
    RoundTrip roundTrip;
};

void fail(std::string_view model, const char* what) {
    std::fprintf(stderr, "%.*s: %s\n", static_cast<int>(model.size()), model.data(), what);
    std::abort();
}

template <std::size_t I>
void roundTrip(std::string_view text) {
    using Model = std::tuple_element_t<I, VaultModels>;
    const std::string_view name = kVaultModelNames[I];
    korvane::JSONDecoder decoder;
    korvane::JSONEncoder encoder;
    auto first = decoder.decode<Model>(text);
    if (!first) return;
    auto written = encoder.encode(*first);
    if (!written) fail(name, "a decoded model does not encode");
    auto second = decoder.decode<Model>(*written);
    if (!second) fail(name, "what it writes, it does not read");
    auto again = encoder.encode(*second);
    if (!again || *again != *written) fail(name, "the round trip is not stable");
}

template <std::size_t... I>
constexpr auto makeTargets(std::index_sequence<I...>) {
    return std::array<Target, sizeof...(I)>{Target{kVaultModelNames[I], &roundTrip<I>}...};
}

constexpr auto kTargets = makeTargets(std::make_index_sequence<std::tuple_size_v<VaultModels>>());

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::size_t newline = input.find('\n');
    if (newline != std::string_view::npos) {
        for (const auto& target : kTargets) {
            if (target.name == input.substr(0, newline)) {
                target.roundTrip(input.substr(newline + 1));
                return 0;
            }
        }
    }
    kTargets[data[0] % kTargets.size()].roundTrip(input.substr(1));
    return 0;
}
