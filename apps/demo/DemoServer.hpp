#pragma once
// DemoServer: the component live in a browser, on the embedded sandbox wallet and vault.
//
// It listens on 127.0.0.1 only and answers only requests whose Host names that address (or
// localhost), so that a web page elsewhere cannot reach it by a name that resolves to loopback.
// Each "/new?screen=NAME" starts a session (a screen of the catalogue on a sandbox of its own)
// and sends the browser to its page; sessions idle for longer than `sessionTtl` are dropped.
//
//   GET  /                      the screens, each a link that starts a session
//   GET  /new?screen=NAME       starts a session, 303 to /s/ID
//   GET  /s/ID                  the session's page: the screen, the sandbox panel, the script
//   POST /s/ID/act              {"action": ..., "path": ..., ...}: a tap, keys, ... (HostActions)
//   POST /s/ID/sandbox          {"wallet": {...}} | {"theme": ...} | {"locale": ...} |
//                               {"demoMode": ...} | {"reset": true}
//   GET  /s/ID/events           server-sent events: "update" (the screen) and "console" lines
//   GET  /s/ID/tree             the tree as JSON
//
// Answers to POSTs are JSON: {"ok": true, "version": n, "html": the screen} or
// {"ok": false, "error": "..."} with a 4xx status for a request that is wrong (unknown session
// 404, malformed JSON or an action the screen refuses 400, a body over the limit 413); nothing
// changes then.
//
// Updates travel as server-sent events rather than long polls: the browser's EventSource
// reconnects by itself and keeps order, one open request carries every update of a session,
// and each update holds the whole screen, so a stream that falls behind keeps only the latest.
// Each open stream holds one server thread, so the pool is sized for many tabs.
//
// The component runs on a main queue of the server's own (a thread it starts and installs as
// the process's main queue); HTTP threads hand it work and wait for the answer.
//
// Thread safety: construct and destroy on one thread; the rest may be called from any.

#include <chrono>
#include <cstddef>
#include <expected>
#include <memory>
#include <string>

namespace tovi::demo {

struct DemoOptions {
    // 0 picks a free port.
    int port = 8080;
    std::chrono::milliseconds sessionTtl{std::chrono::minutes(10)};
    // How often idle sessions are looked for.
    std::chrono::milliseconds sweepInterval{std::chrono::seconds(5)};
    std::size_t maxSessions = 500;
    // Requests from the page are small: keys, a tap, a setting.
    std::size_t maxBodyBytes = 64 * 1024;
    // Worker threads; each open event stream holds one.
    std::size_t threads = 64;
};

class DemoServer {
public:
    // Starts the main queue, the sandbox vault and the HTTP server; the reason when the port
    // cannot be had.
    [[nodiscard]] static std::expected<std::unique_ptr<DemoServer>, std::string> start(DemoOptions options = {});
    ~DemoServer();
    DemoServer(const DemoServer&) = delete;
    DemoServer& operator=(const DemoServer&) = delete;

    [[nodiscard]] int port() const;
    // "http://127.0.0.1:PORT"
    [[nodiscard]] std::string url() const;
    [[nodiscard]] std::size_t sessionCount() const;

    class Impl;

private:
    explicit DemoServer(std::unique_ptr<Impl> impl);
    std::unique_ptr<Impl> impl_;
};

}  // namespace tovi::demo
