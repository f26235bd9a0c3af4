// The vault client's costs against their floors:
//  - BM_DecodeTokenPage / BM_ParseTokenPageJson: a page of 1,000 tokens (every field present)
//    decoded into the models, against a plain parse of the same bytes into the JSON library's
//    tree. Target: at most 2.0 times.
//  - BM_ExecuteLoopback / BM_RawCurlLoopback/6 (HttpLoopbackBench.cpp): TokensAPI.getById
//    through execute, 16 in flight, against plain libcurl with the session's 6 connections
//    per host, same server and body. Target: at most 1.25 times.
// Compare medians of several repetitions; the loopback numbers are noisy.
//  - BM_ExecuteInProcess: the same call against a session that answers at once on the calling
//    thread: what the client itself costs per request (building, encoding, the stores, decoding),
//    without a network or a thread hop. No target; it tells how much of the loopback gap is ours.

#include <benchmark/benchmark.h>
#include <nlohmann/json.hpp>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <utility>

#include "Korvane/CodableHelper.hpp"
#include "Korvane/JSONEncoder.hpp"
#include "Korvane/KorvaneAPI.hpp"
#include "Korvane/RequestBuilderFactory.hpp"
#include "Korvane/TokenPaginatedList.hpp"
#include "Korvane/TokensAPI.hpp"
#include "LoopbackBenchServer.hpp"
#include "platform/testing/InlineExecutor.hpp"

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
        .data = anycodable::AnyCodable::map(
            {{"number", "4242424242424242"}, {"expiration_month", 12}, {"expiration_year", 2030}, {"cvc", "123"}}),
        .metadata = std::map<std::string, std::string>{{"customer", "c_" + std::to_string(i)}, {"source", "app"}},
        .encryption =
            korvane::EncryptionMetadata{.cek = korvane::EncryptionKey{.key = "cek-key", .prov = "vault", .alg = "AES"},
                                        .kek = korvane::EncryptionKey{.key = "kek-key", .prov = "vault", .alg = "RSA"}},
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
        TokenPaginatedList page{
            .pagination = korvane::Pagination{.totalItems = 1000, .pageNumber = 1, .pageSize = 1000, .totalPages = 1},
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

void executeBatch() {
    std::atomic<int> remaining{tovi_bench::kInFlight};
    std::atomic<bool> failed{false};
    for (int i = 0; i < tovi_bench::kInFlight; ++i) {
        korvane::TokensAPI::getById.withRequestBuilder("tok_123")->execute([&](auto result) {
            if (!result) {
                std::fprintf(stderr, "getById failed: code %d, body %s\n", result.error().code,
                             result.error().data.value_or("(none)").c_str());
                failed = true;
            } else if (result->body.id != "tok_123") {
                failed = true;
            }
            if (remaining.fetch_sub(1) == 1) remaining.notify_one();
        });
    }
    for (int left = remaining.load(); left != 0; left = remaining.load()) remaining.wait(left);
    if (failed) throw std::runtime_error("vault request failed");
}

void BM_ExecuteLoopback(benchmark::State& state) {
    korvane::KorvaneAPI::setBasePath(tovi_bench::loopbackServer().baseUrl());
    // Completions run where they are posted (the session's thread), so that the measurement is
    // the client and not a queue hop the raw transport doesn't make.
    korvane::KorvaneAPI::setApiResponseQueue(std::make_shared<platform::InlineExecutor>());
    for (int warm = 0; warm < 20; ++warm) executeBatch();
    for (auto _ : state) executeBatch();
    state.SetItemsProcessed(state.iterations() * tovi_bench::kInFlight);
    korvane::KorvaneAPI::resetForTesting();
}
BENCHMARK(BM_ExecuteLoopback)->UseRealTime();

// Answers every task with the loopback server's token on the thread that resumes it.
class AnsweringSession final : public platform::HttpSession {
    class Task final : public platform::DataTask {
    public:
        Task(std::uint64_t id, platform::HttpRequest request, platform::HttpCompletion completion)
            : id_(id), request_(std::move(request)), completion_(std::move(completion)) {}
        std::uint64_t taskIdentifier() const override { return id_; }
        void resume() override {
            platform::HttpResponse response;
            response.status = 200;
            response.url = request_.url;
            response.headers.set("Content-Type", "application/json");
            response.body = tovi_bench::kTokenBody;
            std::exchange(completion_, nullptr)(std::move(response));
        }
        void cancel() override {}
        platform::HttpTaskState state() const override { return platform::HttpTaskState::completed; }
        std::shared_ptr<const platform::HttpProgress> progress() const override { return progress_; }

    private:
        std::uint64_t id_;
        platform::HttpRequest request_;
        platform::HttpCompletion completion_;
        std::shared_ptr<platform::HttpProgress> progress_ = std::make_shared<platform::HttpProgress>();
    };

public:
    std::shared_ptr<platform::DataTask> dataTask(platform::HttpRequest request,
                                                 platform::HttpCompletion completion) override {
        return std::make_shared<Task>(++tasks_, std::move(request), std::move(completion));
    }
    void setChallengeHandler(platform::ChallengeHandler) override {}
    platform::Executor& delegateQueue() override { return inline_; }

private:
    std::uint64_t tasks_ = 0;
    platform::InlineExecutor inline_;
};

void BM_ExecuteInProcess(benchmark::State& state) {
    AnsweringSession session;
    korvane::KorvaneAPI::setBasePath("http://127.0.0.1:1");
    korvane::KorvaneAPI::setApiResponseQueue(std::make_shared<platform::InlineExecutor>());
    korvane::KorvaneAPI::setRequestBuilderFactory(std::make_shared<korvane::URLSessionRequestBuilderFactory>(&session));
    for (auto _ : state) {
        bool ok = false;
        korvane::TokensAPI::getById.withRequestBuilder("tok_123")->execute(
            [&](auto result) { ok = result && result->body.id == "tok_123"; });
        if (!ok) throw std::runtime_error("vault request failed");
    }
    korvane::KorvaneAPI::resetForTesting();
}
BENCHMARK(BM_ExecuteInProcess);

}  // namespace
