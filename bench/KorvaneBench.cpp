// The vault client's costs against their floors:
//  - BM_DecodeTokenPage / BM_ParseTokenPageJson: a page of 1,000 tokens (every field present)
//    decoded into the models, against a plain parse of the same bytes into the JSON library's
//    tree. Target: at most 2.0 times.
//  - BM_ExecuteLoopback / BM_RawCurlLoopback/6 (HttpLoopbackBench.cpp): TokensAPI.getById
//    through execute, 16 in flight, against plain libcurl with the session's 6 connections
//    per host, same server and body. Target: at most 1.25 times.
// Compare medians of several repetitions; the loopback numbers are noisy.

#include <benchmark/benchmark.h>
#include <nlohmann/json.hpp>

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <string>

#include "Korvane/CodableHelper.hpp"
#include "Korvane/JSONEncoder.hpp"
#include "Korvane/KorvaneAPI.hpp"
#include "Korvane/TokenPaginatedList.hpp"
#include "Korvane/TokensAPI.hpp"
#include "LoopbackBenchServer.hpp"

namespace {

using korvane::Token;
using korvane::TokenPaginatedList;

Token fullToken(int i) {
    const auto at = korvane::Date(std::chrono::milliseconds(1'705'320'000'123LL + i));
    const auto uuid = platform::Uuid::random();
    return Token{
        .id = "tok_" + std::to_string(i),
        .type = "card",
        .tenantId = uuid,
        .data = anycodable::AnyCodable::map({{"number", "4242424242424242"},
                                             {"expiration_month", 12},
                                             {"expiration_year", 2030},
                                             {"cvc", "123"}}),
        .metadata = std::map<std::string, std::string>{{"customer", "c_" + std::to_string(i)}, {"source", "app"}},
        .encryption = korvane::EncryptionMetadata{.cek = korvane::EncryptionKey{.key = "cek-key", .prov = "vault",
                                                                                .alg = "AES"},
                                                  .kek = korvane::EncryptionKey{.key = "kek-key", .prov = "vault",
                                                                                .alg = "RSA"}},
        .createdBy = uuid,
        .createdAt = at,
        .modifiedBy = uuid,
        .modifiedAt = at,
        .fingerprint = "fp_" + std::to_string(i),
        .fingerprintExpression = "{{ data.number }}",
        .mask = anycodable::AnyCodable::map({{"number", "{{ data.number | reveal_last: 4 }}"}}),
        .privacy = korvane::Privacy{.classification = "pci", .impactLevel = "high", .restrictionPolicy = "mask"},
        .searchIndexes = std::vector<std::string>{"{{ data.number }}", "{{ data.number | last4 }}"},
        .expiresAt = at,
        .containers = std::vector<std::string>{"/pci/high/"},
        .aliases = std::vector<std::string>{"alias_" + std::to_string(i)},
    };
}

// The page as a server sends it: compact, dates in the vault's format.
const std::string& tokenPageBytes() {
    static const std::string bytes = [] {
        TokenPaginatedList page{.pagination = korvane::Pagination{.totalItems = 1000, .pageNumber = 1,
                                                                  .pageSize = 1000, .totalPages = 1},
                                .data = std::vector<Token>{}};
        for (int i = 0; i < 1000; ++i) page.data->push_back(fullToken(i));
        korvane::JSONEncoder encoder;
        encoder.dateEncodingStrategy = korvane::CodableHelper::formatted(korvane::CodableHelper::dateFormatter());
        auto text = encoder.encode(page);
        if (!text) throw std::runtime_error(text.error().description());
        return *text;
    }();
    return bytes;
}

void BM_DecodeTokenPage(benchmark::State& state) {
    const std::string& bytes = tokenPageBytes();
    for (auto _ : state) {
        auto page = korvane::CodableHelper::decode<TokenPaginatedList>(bytes);
        if (!page || page->data->size() != 1000) throw std::runtime_error("token page did not decode");
        benchmark::DoNotOptimize(page);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
}
BENCHMARK(BM_DecodeTokenPage);

void BM_ParseTokenPageJson(benchmark::State& state) {
    const std::string& bytes = tokenPageBytes();
    for (auto _ : state) {
        auto tree = nlohmann::json::parse(bytes);
        benchmark::DoNotOptimize(tree);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
}
BENCHMARK(BM_ParseTokenPageJson);

// Runs completions where they are posted (the session's thread), so that the measurement is
// the client and not a queue hop the raw transport doesn't make.
class InlineExecutor final : public platform::Executor {
public:
    void post(platform::Task task) override { task(); }
    void postAfter(std::chrono::milliseconds, platform::Task task) override { task(); }
    [[nodiscard]] bool isCurrent() const override { return false; }
};

void executeBatch() {
    std::atomic<int> remaining{tovi_bench::kInFlight};
    std::atomic<bool> failed{false};
    for (int i = 0; i < tovi_bench::kInFlight; ++i) {
        korvane::TokensAPI::getById.withRequestBuilder("tok_123")->execute([&](auto result) {
            if (!result || result->body.id != "tok_123") failed = true;
            if (remaining.fetch_sub(1) == 1) remaining.notify_one();
        });
    }
    for (int left = remaining.load(); left != 0; left = remaining.load()) remaining.wait(left);
    if (failed) throw std::runtime_error("vault request failed");
}

void BM_ExecuteLoopback(benchmark::State& state) {
    korvane::KorvaneAPI::setBasePath(tovi_bench::loopbackServer().baseUrl());
    korvane::KorvaneAPI::setApiResponseQueue(std::make_shared<InlineExecutor>());
    for (int warm = 0; warm < 20; ++warm) executeBatch();
    for (auto _ : state) executeBatch();
    state.SetItemsProcessed(state.iterations() * tovi_bench::kInFlight);
    korvane::KorvaneAPI::resetForTesting();
}
BENCHMARK(BM_ExecuteLoopback)->UseRealTime();

}  // namespace
