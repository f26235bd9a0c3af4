// The sandbox vault under hostile traffic for a bounded time, on 127.0.0.1 only: fifty
// connections mixing valid tokenize and read calls with wrong keys, bodies over the limit and
// stalled sockets. Every valid call must be answered correctly within a second, no connection
// reset, and the process must not grow by more than 20 MB. Prints the figures it measured.

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <iostream>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <nlohmann/json.hpp>

#include "platform/testing/ResidentMemory.hpp"
#include "sandbox/RawHttp.hpp"
#include "sandbox/SandboxVaultServer.hpp"

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using tovi::sandbox::SandboxVaultServer;

constexpr auto kSoak = 22s;
constexpr auto kWarmUp = 2s;
constexpr int kConnections = 50;
constexpr int kStalledAtOnce = 40;
constexpr auto kStalledClosedWithin = 4s;
constexpr auto kAnswerWithin = 1s;
constexpr int kTokensPerClient = 40;
constexpr const char* kKey = SandboxVaultServer::kDefaultApiKey;
constexpr const char* kNumber = "4242424242424242";

// What the clients saw; shared by every client thread.
struct Tally {
    std::atomic<long> validCalls{0};
    std::atomic<long> wrongAnswers{0};  // a valid call answered with the wrong status or content
    std::atomic<long> late{0};          // a valid call answered after kAnswerWithin
    std::atomic<long> resets{0};
    std::atomic<long> lost{0};  // a connection closed or silent where an answer was due
    std::atomic<long> hostileCalls{0};
    std::atomic<long long> slowestMicros{0};

    void took(Clock::duration duration) {
        const long long micros = std::chrono::duration_cast<std::chrono::microseconds>(duration).count();
        long long seen = slowestMicros.load();
        while (micros > seen && !slowestMicros.compare_exchange_weak(seen, micros)) {
        }
        if (duration > kAnswerWithin) ++late;
    }
    void failed(raw_http::Failure failure) { ++(failure == raw_http::Failure::reset ? resets : lost); }
};

// One client's behaviour, run until `until`; each reconnects when its connection ends.
using Client = void (*)(int port, Clock::time_point until, Tally& tally);

// Tokenizes a card, then reads the token back nineteen times, checking every answer; on one
// connection, or (`Fresh`) on a new connection for every call, as clients without keep-alive
// do. Tokens stay in memory for good, so each client makes only `kTokensPerClient`: otherwise a
// faster machine would store more of them, and the resident size would measure the store
// rather than what hostile traffic leaves behind.
template <bool Fresh>
void validClient(int port, Clock::time_point until, Tally& tally) {
    int tokens = 0;
    const std::string card = std::string(R"({"type": "card", "data": {"number": ")") + kNumber +
                             R"(", "expiration_month": 12, "expiration_year": 2039}})";
    auto connection = std::make_unique<raw_http::Connection>(port);
    std::string read;
    for (int call = 0; Clock::now() < until; ++call) {
        const bool tokenize = read.empty() || (call % 20 == 0 && tokens < kTokensPerClient);
        tokens += tokenize ? 1 : 0;
        const auto started = Clock::now();
        if (Fresh) connection = std::make_unique<raw_http::Connection>(port);
        const auto answer =
            connection->exchange(tokenize ? raw_http::request("POST", "/tokenize", kKey, card) : read, 10s);
        tally.took(Clock::now() - started);
        ++tally.validCalls;
        if (!answer) {
            tally.failed(answer.error());
            connection = std::make_unique<raw_http::Connection>(port);
            continue;
        }
        if (tokenize) {
            const auto token = nlohmann::json::parse(answer->body, nullptr, false);
            if (answer->status != 201 || !token.is_object() || !token["id"].is_string()) {
                ++tally.wrongAnswers;
                continue;
            }
            read = raw_http::request("GET", "/tokens/" + token["id"].get<std::string>(), kKey);
        } else if (answer->status != 200 || answer->body.find(kNumber) == std::string::npos) {
            ++tally.wrongAnswers;
        }
    }
}

// Sends a request that must be refused with `status`, on a fresh connection each time.
template <int Status>
void refusedClient(int port, Clock::time_point until, Tally& tally, const std::string& bytes) {
    while (Clock::now() < until) {
        raw_http::Connection connection(port);
        const auto answer = connection.exchange(bytes, 10s);
        ++tally.hostileCalls;
        if (!answer) {
            tally.failed(answer.error());
        } else if (answer->status != Status) {
            ++tally.wrongAnswers;
        }
    }
}

void wrongKeyClient(int port, Clock::time_point until, Tally& tally) {
    static const std::string bytes = raw_http::request("POST", "/tokenize", "not-a-key", R"({"type": "token"})");
    refusedClient<401>(port, until, tally, bytes);
}

void oversizedClient(int port, Clock::time_point until, Tally& tally) {
    static const std::string bytes =
        raw_http::request("POST", "/tokenize", kKey, std::string(SandboxVaultServer::Options{}.maxBodyBytes + 1, '{'));
    refusedClient<413>(port, until, tally, bytes);
}

// Opens a connection and sends half a request (or nothing), then waits for the vault to
// close it; a connection still open well after the vault's time-outs (2 s) counts as lost.
void stalledClient(int port, Clock::time_point until, Tally& tally) {
    for (int round = 0; Clock::now() < until; ++round) {
        raw_http::Connection connection(port);
        if (round % 2 == 0 && !connection.send("POST /tokenize HTTP/1.1\r\nHost: 127.0.0.1\r\nKV-API-")) {
            ++tally.lost;
            continue;
        }
        const auto answer = connection.read(kStalledClosedWithin);
        ++tally.hostileCalls;
        if (!answer && answer.error() == raw_http::Failure::timedOut) ++tally.lost;
    }
}

// Six in ten connections are valid clients; the rest are hostile.
constexpr Client kMix[10] = {validClient<false>, validClient<false>, validClient<false>, validClient<false>,
                             validClient<true>,  wrongKeyClient,     oversizedClient,    stalledClient,
                             stalledClient,      validClient<true>};

TEST(VaultSoak, ValidCallsStayQuickAndCorrectUnderHostileTraffic) {
    SandboxVaultServer vault;

    // Stalled sockets alone must not hold up a valid call.
    std::vector<std::unique_ptr<raw_http::Connection>> stalled;
    for (int i = 0; i < kStalledAtOnce; ++i) {
        stalled.push_back(std::make_unique<raw_http::Connection>(vault.port()));
        if (i % 2 == 0) {
            ASSERT_TRUE(stalled.back()->send("POST /tokenize HTTP/1.1\r\nHost: 127.0.0.1\r\n"));
        }
    }
    raw_http::Connection probe(vault.port());
    const auto probeStarted = Clock::now();
    const auto probed = probe.exchange(raw_http::request("POST", "/sessions", kKey), 10s);
    const auto stalledDelay = Clock::now() - probeStarted;
    ASSERT_TRUE(probed.has_value());
    EXPECT_EQ(probed->status, 201);
    EXPECT_LT(stalledDelay, kAnswerWithin) << kStalledAtOnce << " stalled sockets held up a valid call";
    stalled.clear();

    // The clients run throughout; the resident size is taken once they have all started and
    // warmed up, so that their threads, the vault's workers and the allocators' caches are in
    // both figures.
    Tally tally;
    const auto warm = Clock::now() + kWarmUp;
    const auto until = warm + kSoak;
    std::vector<std::thread> clients;
    for (int i = 0; i < kConnections; ++i) clients.emplace_back(kMix[i % 10], vault.port(), until, std::ref(tally));
    std::this_thread::sleep_until(warm);
    const double before = platform::testing::residentMegabytes();
    for (auto& client : clients) client.join();
    const double after = platform::testing::residentMegabytes();

    std::cout << "soak: " << tally.validCalls << " valid calls, slowest " << tally.slowestMicros / 1000.0 << " ms, "
              << tally.late << " later than 1 s, " << tally.wrongAnswers << " wrong, " << tally.resets << " resets, "
              << tally.lost << " lost; " << tally.hostileCalls << " hostile calls; " << vault.tokenCount()
              << " tokens; RSS " << before << " MB -> " << after << " MB; " << kStalledAtOnce
              << " stalled sockets delayed a valid call by "
              << std::chrono::duration<double, std::milli>(stalledDelay).count() << " ms\n";
    EXPECT_GT(tally.validCalls, 1000);
    EXPECT_EQ(tally.wrongAnswers, 0);
    EXPECT_EQ(tally.late, 0);
    EXPECT_EQ(tally.resets, 0);
    EXPECT_EQ(tally.lost, 0);
    if (platform::testing::kResidentSizeIsTheProgram) {
        EXPECT_LE(after - before, 20.0) << "MB grown";
    }
}

}  // namespace
