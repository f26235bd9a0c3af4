// The live demo at keystroke rate, as a browser tab sees it.
//
// BM_DemoKeystrokeRoundTrip: one key posted to the demo server over loopback (a kept-alive
// connection, as a browser keeps one) until its answer, which carries the updated screen, has
// arrived. Target: median at most 2 ms. Every seventeenth key empties the card number field
// again, so the field's mask and brand work the whole time.

#include <benchmark/benchmark.h>

#include <curl/curl.h>

#include <memory>
#include <string>

#include "DemoServer.hpp"

namespace {

size_t collect(char* data, size_t size, size_t count, void* into) {
    static_cast<std::string*>(into)->append(data, size * count);
    return size * count;
}

struct CurlDeleter {
    void operator()(CURL* curl) const { curl_easy_cleanup(curl); }
};
struct ListDeleter {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};

void BM_DemoKeystrokeRoundTrip(benchmark::State& state) {
    auto server = tovi::demo::DemoServer::start({.port = 0});
    if (!server) {
        state.SkipWithError(server.error().c_str());
        return;
    }
    std::unique_ptr<CURL, CurlDeleter> curl(curl_easy_init());
    std::string answer;
    curl_easy_setopt(curl.get(), CURLOPT_WRITEFUNCTION, collect);
    curl_easy_setopt(curl.get(), CURLOPT_WRITEDATA, &answer);
    curl_easy_setopt(curl.get(), CURLOPT_TCP_NODELAY, 1L);

    const std::string base = (*server)->url();
    curl_easy_setopt(curl.get(), CURLOPT_URL, (base + "/new?screen=cardFields").c_str());
    char* location = nullptr;
    if (curl_easy_perform(curl.get()) != CURLE_OK ||
        curl_easy_getinfo(curl.get(), CURLINFO_REDIRECT_URL, &location) != CURLE_OK || location == nullptr) {
        state.SkipWithError("the demo did not open a session");
        return;
    }
    const std::string act = std::string(location) + "/act";

    std::unique_ptr<curl_slist, ListDeleter> headers(curl_slist_append(nullptr, "Content-Type: application/json"));
    curl_easy_setopt(curl.get(), CURLOPT_HTTPHEADER, headers.get());
    curl_easy_setopt(curl.get(), CURLOPT_URL, act.c_str());
    const std::string key = R"({"action":"type","id":"cardNumber","keys":"4"})";
    const std::string clear = R"({"action":"delete","id":"cardNumber","times":19})";
    long status = 0;
    int sent = 0;
    for (auto _ : state) {
        const std::string& body = ++sent % 17 == 0 ? clear : key;
        answer.clear();
        curl_easy_setopt(curl.get(), CURLOPT_POSTFIELDS, body.c_str());
        if (curl_easy_perform(curl.get()) != CURLE_OK ||
            curl_easy_getinfo(curl.get(), CURLINFO_RESPONSE_CODE, &status) != CURLE_OK || status != 200) {
            state.SkipWithError("a key was not answered with 200");
            break;
        }
    }
    state.counters["answer_bytes"] = static_cast<double>(answer.size());
}
BENCHMARK(BM_DemoKeystrokeRoundTrip)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
