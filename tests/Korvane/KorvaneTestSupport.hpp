#pragma once
// Shared set-up of the vault client's wire tests: a loopback server as the vault, its URL as
// the base path, and a manual queue as the response queue, drained while waiting.

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <thread>

#include "Korvane/CodableHelper.hpp"
#include "Korvane/KorvaneAPI.hpp"
#include "Korvane/RequestBuilderFactory.hpp"
#include "platform/DeviceInfo.hpp"
#include "platform/LoopbackServer.hpp"
#include "platform/Uuid.hpp"
#include "platform/testing/ManualMainQueue.hpp"

namespace korvane::testing {

class VaultTest : public ::testing::Test {
protected:
    void SetUp() override {
        KorvaneAPI::resetForTesting();
        CodableHelper::resetForTesting();
        KorvaneAPI::setBasePath(server.baseUrl());
        KorvaneAPI::setApiResponseQueue(queue);
    }
    void TearDown() override {
        KorvaneAPI::resetForTesting();
        if (!caches.empty()) {
            std::error_code ignored;
            std::filesystem::remove_all(caches, ignored);
            platform::setCachesDirectory({});
        }
    }

    // Runs the queue until `done` holds, for at most 30 s of real time (the network is real, and
    // a loaded machine moves the 50 MB bodies slowly).
    bool waitFor(const std::function<bool()>& done) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (std::chrono::steady_clock::now() < deadline) {
            queue->runUntilIdle();
            if (done()) return true;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return false;
    }

    template <class T>
    [[nodiscard]] std::shared_ptr<RequestBuilder<T>> builder(std::string method, const std::string& path,
                                                             HeaderMap headers = {},
                                                             std::optional<Parameters> parameters = std::nullopt) {
        RequestBuilderArgs args{std::move(method), server.baseUrl() + path, std::move(parameters), std::move(headers),
                                true};
        if constexpr (std::is_same_v<T, Void>) {
            return KorvaneAPI::requestBuilderFactory()->getNonDecodableBuilder<T>(std::move(args));
        } else {
            return KorvaneAPI::requestBuilderFactory()->getBuilder<T>(std::move(args));
        }
    }

    // Executes and waits for the one completion.
    template <class B>
    [[nodiscard]] std::optional<typename B::Result> run(const std::shared_ptr<B>& b) {
        std::optional<typename B::Result> result;
        b->execute([&](typename B::Result r) { result.emplace(std::move(r)); });
        EXPECT_TRUE(waitFor([&] { return result.has_value(); })) << "no completion";
        return result;
    }

    // A fresh caches directory for download tests.
    std::filesystem::path useFreshCaches() {
        caches = std::filesystem::temp_directory_path() / ("korvane-test-" + platform::Uuid::random().string());
        platform::setCachesDirectory(caches);
        return caches;
    }

    platform::testing::LoopbackServer server;
    std::shared_ptr<platform::ManualMainQueue> queue = std::make_shared<platform::ManualMainQueue>();
    std::filesystem::path caches;
};

// A loopback answer (the struct has members without initialisers, hence the helper).
inline platform::testing::LoopbackResponse reply(int status, std::string body = {},
                                                 platform::HttpHeaders headers = {}) {
    platform::testing::LoopbackResponse response;
    response.status = status;
    response.body = std::move(body);
    response.headers = std::move(headers);
    return response;
}

// Answers every request to `path` (any method) with `status` and `body`.
inline void answer(platform::testing::LoopbackServer& server, const std::string& path, int status,
                   std::string body = {}, platform::HttpHeaders headers = {}) {
    server.on("*", path, [=](const platform::testing::LoopbackRequest&) { return reply(status, body, headers); });
}

}  // namespace korvane::testing
