// How long a host waits for the embedded vault: from construction until it has answered its
// first request, then stopped again.

#include "sandbox/SandboxVaultServer.hpp"

#include <benchmark/benchmark.h>
#include <curl/curl.h>

#include <stdexcept>
#include <string>

namespace {

size_t discard(char*, size_t size, size_t count, void*) {
    return size * count;
}

void BM_StartSandboxVault(benchmark::State& state) {
    curl_global_init(CURL_GLOBAL_DEFAULT);
    CURL* easy = curl_easy_init();
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, discard);
    for (auto _ : state) {
        tovi::sandbox::SandboxVaultServer vault;
        // An unknown token with a valid key: the full request path, answered 404.
        const std::string url = vault.baseUrl() + "/tokens/unknown";
        curl_slist* headers = curl_slist_append(
            nullptr, (std::string("KV-API-KEY: ") + tovi::sandbox::SandboxVaultServer::kDefaultApiKey).c_str());
        curl_easy_setopt(easy, CURLOPT_URL, url.c_str());
        curl_easy_setopt(easy, CURLOPT_HTTPHEADER, headers);
        const CURLcode code = curl_easy_perform(easy);
        long status = 0;
        curl_easy_getinfo(easy, CURLINFO_RESPONSE_CODE, &status);
        curl_slist_free_all(headers);
        if (code != CURLE_OK || status != 404) throw std::runtime_error("sandbox vault did not answer");
        vault.stop();
    }
    curl_easy_cleanup(easy);
}
BENCHMARK(BM_StartSandboxVault)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace
