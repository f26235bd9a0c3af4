#pragma once
// HttpSession: the narrow transport interface the vault client, the proxy helpers and the
// telemetry logger talk to. `CurlSession` is the real one, `RecordingTransport` the fake.
//
// Usage:
//     auto task = session.dataTask(request, [](platform::HttpResult result) { ... });
//     task->resume();          // nothing is sent before this
//     ...
//     task->cancel();          // optional; the completion then gets `cancelled`
//
// Every completion runs exactly once, on the session's delegate queue, unless the task is
// never resumed nor cancelled (then it never runs).

#include "platform/Executor.hpp"
#include "platform/Http.hpp"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace platform {

enum class HttpTaskState { running, suspended, canceling, completed };

// HttpProgress
//
// Byte counts of one task. Written by the transport, readable from any thread; the values
// are individually consistent, not a snapshot of all four at one instant. A total of -1
// means "not known (yet)".
class HttpProgress {
public:
    [[nodiscard]] std::int64_t bytesSent() const { return sent_.load(std::memory_order_relaxed); }
    [[nodiscard]] std::int64_t bytesReceived() const { return received_.load(std::memory_order_relaxed); }
    [[nodiscard]] std::int64_t totalBytesExpectedToSend() const { return sendTotal_.load(std::memory_order_relaxed); }
    [[nodiscard]] std::int64_t totalBytesExpectedToReceive() const {
        return receiveTotal_.load(std::memory_order_relaxed);
    }

    // Transport side.
    void updateSend(std::int64_t done, std::int64_t total) {
        sent_.store(done, std::memory_order_relaxed);
        sendTotal_.store(total, std::memory_order_relaxed);
    }
    void updateReceive(std::int64_t done, std::int64_t total) {
        received_.store(done, std::memory_order_relaxed);
        receiveTotal_.store(total, std::memory_order_relaxed);
    }

private:
    std::atomic<std::int64_t> sent_{0};
    std::atomic<std::int64_t> received_{0};
    std::atomic<std::int64_t> sendTotal_{-1};
    std::atomic<std::int64_t> receiveTotal_{-1};
};

// DataTask
//
// One request/response exchange. Thread safety: every member may be called from any thread,
// including from inside a completion of the same session.
class DataTask {
public:
    virtual ~DataTask() = default;

    // Unique within its session and increasing in creation order.
    [[nodiscard]] virtual std::uint64_t taskIdentifier() const = 0;
    // Starts the exchange. A second call, or a call after cancel, does nothing.
    virtual void resume() = 0;
    // The completion receives `HttpErrorCode::cancelled` exactly once, however often and
    // from however many threads this is called, unless the exchange had already finished:
    // then this does nothing. Cancelling a task that was never resumed also completes it.
    virtual void cancel() = 0;
    [[nodiscard]] virtual HttpTaskState state() const = 0;
    // Lives as long as any holder; the task keeps updating it while running.
    [[nodiscard]] virtual std::shared_ptr<const HttpProgress> progress() const = 0;
};

enum class HttpAuthScheme { basic, digest };

struct ProtectionSpace {
    std::string host;
    int port = 0;
    std::string realm;
    HttpAuthScheme scheme = HttpAuthScheme::basic;

    friend bool operator==(const ProtectionSpace&, const ProtectionSpace&) = default;
};

struct AuthChallenge {
    std::uint64_t taskIdentifier = 0;
    ProtectionSpace protectionSpace;
    // How many credentials the task has already been refused for this exchange.
    int previousFailureCount = 0;
};

enum class ChallengeDisposition {
    useCredential,           // repeat the request with `credential`
    performDefaultHandling,  // use the request's own credential once, else give up
    cancel,                  // complete the task with `cancelled`
    rejectProtectionSpace,   // deliver the 401 response as it is
};

struct ChallengeAnswer {
    ChallengeDisposition disposition = ChallengeDisposition::performDefaultHandling;
    std::optional<HttpCredential> credential;
};

// Called on the session's delegate queue when a server answers 401 with a Basic or Digest
// challenge. Without a handler every challenge gets default handling.
using ChallengeHandler = std::function<ChallengeAnswer(const AuthChallenge&)>;

class HttpSession {
public:
    virtual ~HttpSession() = default;

    // Creates a suspended task. `completion` runs on `delegateQueue()`.
    [[nodiscard]] virtual std::shared_ptr<DataTask> dataTask(HttpRequest request, HttpCompletion completion) = 0;

    // REQUIRES: called once, at start-up, before the first task is resumed.
    virtual void setChallengeHandler(ChallengeHandler handler) = 0;

    // The serial executor on which completions and challenge handlers run.
    [[nodiscard]] virtual Executor& delegateQueue() = 0;
};

// The process-wide session (a CurlSession), created on first use and never destroyed, so
// that it can be used until the process exits. Thread-safe.
[[nodiscard]] HttpSession& sharedHttpSession();

}  // namespace platform
