#pragma once
// RecordingTransport: an HttpSession for tests. Nothing goes on the wire.
//
// It records every request at the moment its task is resumed, in order, and answers each
// from a queue of canned results, falling back to a handler function, and finally to an
// `other` error saying nothing was queued. Completions run on the executor given at
// construction (for example a manual main queue the test drains), or synchronously inside
// `resume()` when none is given.
//
// Hold-back: while `holdResponses(true)` is in force, resumed tasks keep their answer
// until the test calls `releaseNext()`/`release(id)`/`releaseAll()`, which lets a test
// cancel a task in flight or complete tasks out of order.
//
//     platform::RecordingTransport transport;
//     transport.enqueueResponse(200, R"({"id":"t1"})");
//     runCodeUnderTest(transport);
//     EXPECT_EQ(transport.requests().at(0).method, "POST");
//
// Thread safety: all members are safe from any thread; completions never run while an
// internal lock is held, so they may call back into the transport.
// REQUIRES: the transport outlives every task it made.

#include "platform/HttpSession.hpp"
#include "platform/testing/InlineExecutor.hpp"

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace platform {

class RecordingTransport final : public HttpSession {
public:
    using Handler = std::function<HttpResult(const HttpRequest&)>;

    // `completionExecutor` must outlive the transport; null means "inline".
    explicit RecordingTransport(Executor* completionExecutor = nullptr);
    ~RecordingTransport() override;

    void enqueueResult(HttpResult result);
    void enqueueResponse(int status, std::string body = {}, HttpHeaders headers = {});
    void enqueueError(HttpErrorCode code, std::string message = {});
    // Answers requests once the queue of canned results is empty.
    void setHandler(Handler handler);

    void holdResponses(bool hold);
    [[nodiscard]] std::size_t heldCount() const;
    // Completes the oldest held task; false when none is held.
    bool releaseNext();
    bool release(std::uint64_t taskIdentifier);
    void releaseAll();

    // Every resumed request, in resume order.
    [[nodiscard]] std::vector<HttpRequest> requests() const;
    [[nodiscard]] std::size_t requestCount() const;
    [[nodiscard]] std::optional<ChallengeAnswer> challenge(const AuthChallenge& challenge) const;

    [[nodiscard]] std::shared_ptr<DataTask> dataTask(HttpRequest request, HttpCompletion completion) override;
    void setChallengeHandler(ChallengeHandler handler) override;
    [[nodiscard]] Executor& delegateQueue() override;

    class RecordedTask;

private:
    friend class RecordedTask;
    void started(const std::shared_ptr<RecordedTask>& task, const HttpRequest& request);
    void cancelled(std::uint64_t taskIdentifier);

    Executor* executor_;
    InlineExecutor inlineExecutor_;
    mutable std::mutex mutex_;
    std::deque<HttpResult> canned_;
    Handler handler_;
    ChallengeHandler challengeHandler_;
    bool hold_ = false;
    std::deque<std::pair<std::shared_ptr<RecordedTask>, HttpResult>> held_;
    std::vector<HttpRequest> requests_;
    std::uint64_t nextIdentifier_ = 1;
};

}  // namespace platform
