#pragma once
// LoopbackServer: a real HTTP/1.1 server on 127.0.0.1 for wire-level tests and benchmarks.
//
// It listens on a random free port from construction to destruction. Handlers are looked up
// by method and path pattern; every request that arrives is recorded, matched or not.
//
//     platform::testing::LoopbackServer server;
//     server.on("POST", "/v1/tokens", [](const LoopbackRequest& r) {
//         return LoopbackResponse{.status = 201, .body = r.body};
//     });
//     ... request server.baseUrl() + "/v1/tokens" ...
//     EXPECT_EQ(server.receivedRequests().at(0).header("Content-Type"), "application/json");
//
// Patterns: an exact path, or a prefix ending in "*" ("/v1/*"); method "*" matches any
// method. The most recently registered matching handler wins; no match answers 404.
//
// Bodies of POST, PUT, PATCH and DELETE reach handlers whole (chunked ones included); a
// multipart body is read but reaches the handler empty.
//
// Thread safety: all members are safe from any thread; handlers run on the server's worker
// threads, several at a time. Destruction stops the server and cuts short pending delays.

#include "platform/Http.hpp"

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace platform::testing {

struct LoopbackRequest {
    std::string method;
    // Decoded path, without the query.
    std::string path;
    // Query items in the order they were sent, percent-decoded ("+" is kept as it is).
    std::vector<std::pair<std::string, std::string>> query;
    std::string rawQuery;
    HttpHeaders headers;
    std::string body;

    [[nodiscard]] std::optional<std::string> header(std::string_view name) const { return headers.get(name); }
};

struct LoopbackResponse {
    int status = 200;
    HttpHeaders headers;
    std::string body;
    // Waited before answering (in the handler's worker thread).
    std::chrono::milliseconds delay{0};
    // Announces the full length, sends half of the body and closes the connection.
    bool closeMidBody = false;
};

// Shorthands (aggregate initialisation with designators trips -Wmissing-field-initializers).
[[nodiscard]] inline LoopbackResponse respond(int status, std::string body = {}, HttpHeaders headers = {}) {
    LoopbackResponse response;
    response.status = status;
    response.body = std::move(body);
    response.headers = std::move(headers);
    return response;
}
[[nodiscard]] inline LoopbackResponse delayed(std::chrono::milliseconds delay, LoopbackResponse response) {
    response.delay = delay;
    return response;
}
[[nodiscard]] inline LoopbackResponse cutMidBody(std::string body) {
    auto response = respond(200, std::move(body));
    response.closeMidBody = true;
    return response;
}

using LoopbackHandler = std::function<LoopbackResponse(const LoopbackRequest&)>;

class LoopbackServer {
public:
    struct Options {
        // Workers kept once started. More start while every worker is busy, up to `maxThreads`,
        // and end after a few idle seconds: a connection holds its worker from its first byte
        // to its close, idle keep-alive time included, so a fixed pool would let a few stalled
        // clients make every other one wait.
        std::size_t threads = 8;
        std::size_t maxThreads = 256;
        // How many of the latest requests `receivedRequests` keeps. A long-running server
        // (a benchmark, an embedded sandbox) must not hold every request it ever saw.
        std::size_t keepRequests = static_cast<std::size_t>(-1);
        // A larger request body is answered 413 and never held in full.
        std::size_t maxBodyBytes = static_cast<std::size_t>(-1);
        // How long one read of a request, or one write of an answer, may wait for the client.
        std::chrono::milliseconds readTimeout{5'000};
        std::chrono::milliseconds writeTimeout{5'000};
        // How long a connection may wait for its next request (whole seconds, at least 1).
        std::chrono::seconds idleTimeout{5};
        // The answer to what the server refuses without a handler: 404 (no route), 400 (a
        // malformed request or body), 413 (too large a body), 414 (too long a URI) and 503 (cut
        // short by stop()). Unset: the bare status.
        std::function<LoopbackResponse(int status)> refusal;
    };

    LoopbackServer();
    explicit LoopbackServer(Options options);
    ~LoopbackServer();
    LoopbackServer(const LoopbackServer&) = delete;
    LoopbackServer& operator=(const LoopbackServer&) = delete;

    void on(std::string method, std::string pathPattern, LoopbackHandler handler);

    // "http://127.0.0.1:<port>", no trailing slash.
    [[nodiscard]] std::string baseUrl() const;
    [[nodiscard]] int port() const;

    // The latest requests, oldest first, at most `Options::keepRequests` of them.
    [[nodiscard]] std::vector<LoopbackRequest> receivedRequests() const;
    // All requests since start or the last clear, kept or not.
    [[nodiscard]] std::size_t requestCount() const;
    void clearReceivedRequests();

    // Stops accepting and closes connections; also done by the destructor.
    void stop();

    class Impl;

private:
    std::unique_ptr<Impl> impl_;
};

}  // namespace platform::testing
