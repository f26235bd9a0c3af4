#pragma once
// CurlSession: the real HttpSession.
//
// One multiplexing engine on one I/O thread serves every task of the session: connections
// are kept alive and reused (HTTP/1.1, at most 6 per host; further requests queue for a
// free one), TLS peers are verified, redirects are followed (up to 16). Completions and challenge handlers run on the
// session's own serial delegate thread, never on the I/O thread, so a completion may block or call back into the
// session (dataTask, resume, cancel) without stalling transfers of other tasks; it does hold up later completions, as
// on any serial queue.
//
// Wire rules: the method is sent as written; HEAD asks for no body; a body goes out only
// when it is non-empty (POST, PUT and PATCH without one send "Content-Length: 0"); request
// headers are passed through, and nothing the caller did not set is added: no
// Content-Type, no "Expect: 100-continue", no Accept-Encoding.
//
// Thread safety: all members are safe from any thread. Destruction cancels every task
// still running (their completions get `cancelled`), waits for the delegate queue to
// drain, and joins both threads.
// REQUIRES: not destroyed from one of its own completions.

#include "platform/HttpSession.hpp"

#include <memory>

namespace platform {

class CurlSession final : public HttpSession {
public:
    CurlSession();
    ~CurlSession() override;
    CurlSession(const CurlSession&) = delete;
    CurlSession& operator=(const CurlSession&) = delete;

    [[nodiscard]] std::shared_ptr<DataTask> dataTask(HttpRequest request, HttpCompletion completion) override;
    void setChallengeHandler(ChallengeHandler handler) override;
    [[nodiscard]] Executor& delegateQueue() override;

    class Engine;

private:
    std::shared_ptr<Engine> engine_;
};

}  // namespace platform
