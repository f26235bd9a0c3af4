#pragma once
// Helpers for tests that run real exchanges: wait for completions without sleeping.

#include "platform/HttpSession.hpp"
#include "platform/LoopbackServer.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <future>
#include <memory>
#include <mutex>
#include <vector>

namespace http_test {

inline constexpr auto kGenerous = std::chrono::seconds(20);

// Runs one exchange and waits for its completion.
inline platform::HttpResult perform(platform::HttpSession& session, platform::HttpRequest request) {
    auto promise = std::make_shared<std::promise<platform::HttpResult>>();
    auto future = promise->get_future();
    auto task =
        session.dataTask(std::move(request), [promise](platform::HttpResult r) { promise->set_value(std::move(r)); });
    task->resume();
    if (future.wait_for(kGenerous) != std::future_status::ready) {
        ADD_FAILURE() << "no completion";
        return platform::failure(platform::HttpError{platform::HttpErrorCode::other, "test: no completion", 0});
    }
    return future.get();
}

inline platform::HttpRequest request(std::string method, std::string url, platform::HttpHeaders headers = {},
                                     std::string body = {}) {
    platform::HttpRequest r;
    r.method = std::move(method);
    r.url = std::move(url);
    r.headers = std::move(headers);
    r.body = std::move(body);
    return r;
}

inline platform::HttpRequest get(std::string url) {
    platform::HttpRequest request;
    request.url = std::move(url);
    return request;
}

// The base URL of a loopback port that has just been closed: connecting to it is refused.
inline std::string closedBaseUrl() {
    platform::testing::LoopbackServer closed;
    return closed.baseUrl();
}

// A loopback server that holds every request for an hour.
inline std::unique_ptr<platform::testing::LoopbackServer> stallingServer() {
    auto server = std::make_unique<platform::testing::LoopbackServer>();
    server->on("*", "*", [](const platform::testing::LoopbackRequest&) {
        return platform::testing::delayed(std::chrono::hours(1), platform::testing::respond(200, "{}"));
    });
    return server;
}

// Collects completions from any thread; `waitFor(n)` blocks until n have arrived. Callbacks
// share its state, so a completion arriving after a failed test has ended is harmless.
class Completions {
public:
    platform::HttpCompletion callback(std::size_t slot) {
        return [state = state_, slot](platform::HttpResult result) {
            std::lock_guard lock(state->mutex);
            state->results.emplace_back(slot, std::move(result));
            state->changed.notify_all();
        };
    }
    bool waitFor(std::size_t count) {
        std::unique_lock lock(state_->mutex);
        return state_->changed.wait_for(lock, kGenerous, [&] { return state_->results.size() >= count; });
    }
    std::vector<std::pair<std::size_t, platform::HttpResult>> results() {
        std::lock_guard lock(state_->mutex);
        return state_->results;
    }

private:
    struct State {
        std::mutex mutex;
        std::condition_variable changed;
        std::vector<std::pair<std::size_t, platform::HttpResult>> results;
    };
    std::shared_ptr<State> state_ = std::make_shared<State>();
};

}  // namespace http_test
