// The shared HTTP session against plain libcurl, both keeping 16 GETs in flight against the
// same loopback server. Compare per-request times (session / raw) from the medians of
// several repetitions: the loopback server is noisy.

#include "LoopbackBenchServer.hpp"
#include "platform/HttpSession.hpp"

#include <benchmark/benchmark.h>
#include <curl/curl.h>

#include <atomic>
#include <cstdio>
#include <string>
#include <vector>

namespace {

using tovi_bench::kInFlight;
constexpr const char* kBody = tovi_bench::kTokenBody;

platform::testing::LoopbackServer& server() {
    return tovi_bench::loopbackServer();
}

void sessionBatch(platform::HttpSession& session, const std::string& url) {
    std::atomic<int> remaining{kInFlight};
    std::atomic<bool> failed{false};
    std::vector<std::shared_ptr<platform::DataTask>> tasks;
    tasks.reserve(kInFlight);
    for (int i = 0; i < kInFlight; ++i) {
        platform::HttpRequest request;
        request.url = url;
        tasks.push_back(session.dataTask(std::move(request), [&](platform::HttpResult result) {
            if (!result) std::fprintf(stderr, "session request failed: %s\n", result.error().message.c_str());
            if (!result || result->body.size() != std::char_traits<char>::length(kBody)) failed = true;
            if (remaining.fetch_sub(1) == 1) remaining.notify_one();
        }));
    }
    for (auto& task : tasks) task->resume();
    for (int left = remaining.load(); left != 0; left = remaining.load()) remaining.wait(left);
    if (failed) throw std::runtime_error("session request failed");
}

void BM_SessionLoopback(benchmark::State& state) {
    auto& session = platform::sharedHttpSession();
    const auto url = server().baseUrl() + "/token";
    for (int warm = 0; warm < 20; ++warm) sessionBatch(session, url);
    for (auto _ : state) sessionBatch(session, url);
    state.SetItemsProcessed(state.iterations() * kInFlight);
}
BENCHMARK(BM_SessionLoopback)->UseRealTime();

size_t discardInto(char* data, size_t size, size_t count, void* user) {
    static_cast<std::string*>(user)->append(data, size * count);
    return size * count;
}

// The argument is the per-host connection limit (0: none). The session keeps the phone's
// limit of 6, so the comparison of its overhead is against /6; /0 shows what the limit costs.
void BM_RawCurlLoopback(benchmark::State& state) {
    curl_global_init(CURL_GLOBAL_DEFAULT);
    const auto url = server().baseUrl() + "/token";
    CURLM* multi = curl_multi_init();
    curl_multi_setopt(multi, CURLMOPT_MAX_HOST_CONNECTIONS, static_cast<long>(state.range(0)));
    std::vector<CURL*> handles(kInFlight);
    std::vector<std::string> bodies(kInFlight);
    for (int i = 0; i < kInFlight; ++i) {
        handles[i] = curl_easy_init();
        curl_easy_setopt(handles[i], CURLOPT_URL, url.c_str());
        curl_easy_setopt(handles[i], CURLOPT_NOSIGNAL, 1L);
        curl_easy_setopt(handles[i], CURLOPT_WRITEFUNCTION, &discardInto);
        curl_easy_setopt(handles[i], CURLOPT_WRITEDATA, &bodies[i]);
    }
    auto batch = [&] {
        for (int i = 0; i < kInFlight; ++i) {
            bodies[i].clear();
            curl_multi_add_handle(multi, handles[i]);
        }
        int running = kInFlight;
        while (running > 0) {
            curl_multi_perform(multi, &running);
            if (running > 0) curl_multi_poll(multi, nullptr, 0, 1000, nullptr);
        }
        int queued = 0;
        while (CURLMsg* message = curl_multi_info_read(multi, &queued)) {
            if (message->data.result != CURLE_OK) throw std::runtime_error("raw request failed");
        }
        for (int i = 0; i < kInFlight; ++i) curl_multi_remove_handle(multi, handles[i]);
    };
    for (int warm = 0; warm < 20; ++warm) batch();
    for (auto _ : state) batch();
    state.SetItemsProcessed(state.iterations() * kInFlight);
    for (CURL* h : handles) curl_easy_cleanup(h);
    curl_multi_cleanup(multi);
}
BENCHMARK(BM_RawCurlLoopback)->Arg(6)->Arg(0)->UseRealTime();

}  // namespace
