#include "platform/CurlSession.hpp"

#include "CurlEasy.hpp"
#include "HttpAuthChallenge.hpp"
#include "HttpDelegateQueue.hpp"
#include "platform/internal/HttpTaskBase.hpp"

#include <curl/curl.h>

#include <atomic>
#include <mutex>
#include <thread>
#include <unordered_map>
#include <vector>

namespace platform {

using namespace http_internal;

namespace {

constexpr long kMaxConnectionsPerHost = 6;
constexpr long kMaxIdleConnections = 64;

void initCurlOnce() {
    static const CURLcode rc = curl_global_init(CURL_GLOBAL_DEFAULT);
    (void)rc;
}

class CurlTask;

}  // namespace

// The I/O side of a session. Everything named `io...` and every curl call runs on the I/O
// thread only; other threads talk to it through `push`, which queues a command and wakes the
// thread out of curl_multi_poll.
class CurlSession::Engine : public std::enable_shared_from_this<CurlSession::Engine> {
public:
    Engine();
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;
    void start() {
        ioThread_ = std::thread([this] { ioLoop(); });
    }
    void shutdown();

    void submit(std::shared_ptr<CurlTask> task);
    void cancel(std::uint64_t id) { push(Command{Command::cancel, nullptr, id, {}}); }
    void answer(std::uint64_t id, ChallengeAnswer a) { push(Command{Command::answer, nullptr, id, std::move(a)}); }

    void setChallengeHandler(ChallengeHandler handler) {
        std::lock_guard lock(handlerMutex_);
        handler_ = std::move(handler);
    }

    std::uint64_t nextIdentifier() { return nextId_.fetch_add(1, std::memory_order_relaxed); }
    HttpDelegateQueue& delegate() { return delegate_; }

private:
    struct Command {
        enum Kind { start, cancel, answer } kind;  // NOLINT
        std::shared_ptr<CurlTask> task;
        std::uint64_t id = 0;
        ChallengeAnswer reply;
    };

    struct Transfer {
        std::shared_ptr<CurlTask> task;
        CURL* easy = nullptr;
        curl_slist* headerList = nullptr;
        AttemptSink sink;
        std::optional<AttemptAuth> auth;
        std::optional<ParsedChallenge> challenge;
        bool inMulti = false;
        bool usedRequestCredential = false;
        int authFailures = 0;
    };

    void push(Command command);
    void ioLoop();
    void ioHandle(Command& command, bool stopping);
    void ioStart(std::shared_ptr<CurlTask> task);
    void ioAttempt(Transfer& transfer);
    void ioFinished(CURLMsg* message);
    void ioAnswer(std::uint64_t id, const ChallengeAnswer& answer);
    void ioDefaultHandling(Transfer& transfer);
    void ioRetry(Transfer& transfer, HttpCredential credential);
    void ioDeliver(Transfer& transfer, HttpResult result);
    void ioRelease(std::uint64_t id);

    CURLM* multi_ = nullptr;
    std::unordered_map<std::uint64_t, std::unique_ptr<Transfer>> transfers_;
    std::vector<CURL*> idleEasy_;

    std::mutex commandMutex_;
    std::vector<Command> commands_;
    bool stopping_ = false;
    bool stopped_ = false;

    std::mutex handlerMutex_;
    ChallengeHandler handler_;
    std::atomic<std::uint64_t> nextId_{1};
    HttpDelegateQueue delegate_;
    std::thread ioThread_;
};

namespace {

class CurlTask final : public HttpTaskBase {
public:
    CurlTask(std::shared_ptr<CurlSession::Engine> engine, std::uint64_t id, HttpRequest request,
             HttpCompletion completion)
        : HttpTaskBase(id, std::move(completion), &engine->delegate()),
          engine_(std::move(engine)),
          request_(std::move(request)) {}

    [[nodiscard]] const HttpRequest& request() const { return request_; }

protected:
    void onResume() override { engine_->submit(std::static_pointer_cast<CurlTask>(shared_from_this())); }
    void onCancel() override { engine_->cancel(taskIdentifier()); }

private:
    // Keeps the delegate queue (the completion executor) alive as long as the task.
    std::shared_ptr<CurlSession::Engine> engine_;
    const HttpRequest request_;
};

}  // namespace

CurlSession::Engine::Engine() {
    initCurlOnce();
    multi_ = curl_multi_init();
    // As on the phone: a few connections per host, further requests wait for a free one.
    curl_multi_setopt(multi_, CURLMOPT_MAX_HOST_CONNECTIONS, kMaxConnectionsPerHost);
    // The default cache size follows the number of transfers currently added, so idle
    // moments would close warm connections; keep them instead.
    curl_multi_setopt(multi_, CURLMOPT_MAXCONNECTS, kMaxIdleConnections);
}

CurlSession::Engine::~Engine() {
    shutdown();
    curl_multi_cleanup(multi_);
}

void CurlSession::Engine::shutdown() {
    {
        std::lock_guard lock(commandMutex_);
        stopping_ = true;
    }
    curl_multi_wakeup(multi_);
    if (ioThread_.joinable()) ioThread_.join();
    delegate_.shutdown();
}

void CurlSession::Engine::submit(std::shared_ptr<CurlTask> task) {
    push(Command{Command::start, std::move(task), 0, {}});
}

void CurlSession::Engine::push(Command command) {
    bool wake = false;
    {
        std::lock_guard lock(commandMutex_);
        if (!stopped_) {
            // Only the first command of a batch needs to wake the thread: the rest are
            // taken in the same swap.
            wake = commands_.empty();
            commands_.push_back(std::move(command));
            command.task = nullptr;
        }
    }
    if (wake) {
        curl_multi_wakeup(multi_);
    } else if (command.kind == Command::start && command.task) {
        // The session is gone: nothing will ever run this task.
        command.task->complete(failure(cancelledError()));
    }
}

void CurlSession::Engine::ioLoop() {
    std::vector<Command> batch;
    for (;;) {
        bool stop = false;
        {
            std::lock_guard lock(commandMutex_);
            batch.swap(commands_);
            stop = stopping_;
            if (stop) stopped_ = true;
        }
        for (auto& command : batch) ioHandle(command, stop);
        batch.clear();
        if (stop) break;

        int running = 0;
        curl_multi_perform(multi_, &running);
        int queued = 0;
        while (CURLMsg* message = curl_multi_info_read(multi_, &queued)) {
            if (message->msg == CURLMSG_DONE) ioFinished(message);
        }
        curl_multi_poll(multi_, nullptr, 0, 1000, nullptr);
    }
    // Stopping: whatever still runs or waits for a challenge answer ends as cancelled.
    std::vector<std::uint64_t> ids;
    for (const auto& [id, transfer] : transfers_) ids.push_back(id);
    for (auto id : ids) {
        auto& transfer = *transfers_.at(id);
        transfer.task->complete(failure(cancelledError()));
        ioRelease(id);
    }
    for (CURL* easy : idleEasy_) curl_easy_cleanup(easy);
    idleEasy_.clear();
    // The multi handle itself lives until ~Engine: late pushers may still wake it.
}

void CurlSession::Engine::ioHandle(Command& command, bool stopping) {
    switch (command.kind) {
        case Command::start:
            if (stopping) {
                command.task->complete(failure(cancelledError()));
            } else {
                ioStart(std::move(command.task));
            }
            break;
        case Command::cancel:
            ioRelease(command.id);
            break;
        case Command::answer:
            ioAnswer(command.id, command.reply);
            break;
    }
}

void CurlSession::Engine::ioStart(std::shared_ptr<CurlTask> task) {
    if (task->isFinished()) return;  // cancelled before the I/O thread saw it
    if (auto error = validateUrl(task->request().url)) {
        task->complete(failure(std::move(*error)));
        return;
    }
    auto transfer = std::make_unique<Transfer>();
    transfer->task = std::move(task);
    transfer->sink.progress = &transfer->task->mutableProgress();
    if (idleEasy_.empty()) {
        transfer->easy = curl_easy_init();
    } else {
        transfer->easy = idleEasy_.back();
        idleEasy_.pop_back();
    }
    auto& ref = *transfer;
    transfers_.emplace(ref.task->taskIdentifier(), std::move(transfer));
    ioAttempt(ref);
}

void CurlSession::Engine::ioAttempt(Transfer& transfer) {
    curl_easy_reset(transfer.easy);
    curl_slist_free_all(transfer.headerList);
    transfer.sink.response = HttpResponse{};
    transfer.sink.errorBuffer[0] = '\0';
    transfer.headerList =
        configureEasy(transfer.easy, transfer.task->request(), transfer.sink, transfer.auth, &transfer);
    curl_multi_add_handle(multi_, transfer.easy);
    transfer.inMulti = true;
}

void CurlSession::Engine::ioFinished(CURLMsg* message) {
    Transfer* transfer = nullptr;
    curl_easy_getinfo(message->easy_handle, CURLINFO_PRIVATE, &transfer);
    const CURLcode code = message->data.result;
    curl_multi_remove_handle(multi_, transfer->easy);
    transfer->inMulti = false;

    if (code != CURLE_OK && transfer->sink.redirectRefused) {
        ioDeliver(*transfer, failure(HttpError{HttpErrorCode::redirectRefused,
                                               "a redirect to another origin was refused", static_cast<int>(code)}));
        return;
    }
    if (code != CURLE_OK) {
        ioDeliver(*transfer, failure(httpErrorFromCurl(code, transfer->sink.errorBuffer)));
        return;
    }
    auto& response = transfer->sink.response;
    long status = 0;
    curl_easy_getinfo(transfer->easy, CURLINFO_RESPONSE_CODE, &status);
    response.status = static_cast<int>(status);
    char* effective = nullptr;
    curl_easy_getinfo(transfer->easy, CURLINFO_EFFECTIVE_URL, &effective);
    response.url = effective != nullptr ? effective : transfer->task->request().url;
    transfer->task->mutableProgress().updateReceive(static_cast<std::int64_t>(response.body.size()),
                                                    static_cast<std::int64_t>(response.body.size()));

    if (status == 401 && !transfer->task->isFinished()) {
        if (auto challenge = selectChallenge(response.headers)) {
            if (transfer->auth) ++transfer->authFailures;
            transfer->challenge = challenge;
            ChallengeHandler handler;
            {
                std::lock_guard lock(handlerMutex_);
                handler = handler_;
            }
            if (!handler) {
                ioDefaultHandling(*transfer);
                return;
            }
            long port = 0;
            curl_easy_getinfo(transfer->easy, CURLINFO_PRIMARY_PORT, &port);
            std::string host;
            if (CURLU* url = curl_url()) {
                char* h = nullptr;
                if (curl_url_set(url, CURLUPART_URL, response.url.c_str(), 0) == CURLUE_OK &&
                    curl_url_get(url, CURLUPART_HOST, &h, 0) == CURLUE_OK) {
                    host = h;
                    curl_free(h);
                }
                curl_url_cleanup(url);
            }
            AuthChallenge question{transfer->task->taskIdentifier(),
                                   ProtectionSpace{host, static_cast<int>(port), challenge->realm, challenge->scheme},
                                   transfer->authFailures};
            // Asked on the delegate queue so that a handler may block without stalling I/O.
            delegate_.post([self = shared_from_this(), handler = std::move(handler), question = std::move(question)] {
                self->answer(question.taskIdentifier, handler(question));
            });
            return;
        }
    }
    ioDeliver(*transfer, std::move(response));
}

void CurlSession::Engine::ioAnswer(std::uint64_t id, const ChallengeAnswer& answer) {
    const auto found = transfers_.find(id);
    if (found == transfers_.end()) return;
    auto& transfer = *found->second;
    if (transfer.task->isFinished()) {
        ioRelease(id);
        return;
    }
    switch (answer.disposition) {
        case ChallengeDisposition::useCredential:
            if (answer.credential) {
                ioRetry(transfer, *answer.credential);
            } else {
                ioDeliver(transfer, transfer.sink.response);
            }
            break;
        case ChallengeDisposition::performDefaultHandling:
            ioDefaultHandling(transfer);
            break;
        case ChallengeDisposition::cancel:
            transfer.task->cancel();  // delivers `cancelled`; its release command finds nothing left
            ioRelease(id);
            break;
        case ChallengeDisposition::rejectProtectionSpace:
            ioDeliver(transfer, transfer.sink.response);
            break;
    }
}

void CurlSession::Engine::ioDefaultHandling(Transfer& transfer) {
    const auto& credential = transfer.task->request().credential;
    if (credential && !transfer.usedRequestCredential) {
        transfer.usedRequestCredential = true;
        ioRetry(transfer, *credential);
        return;
    }
    ioDeliver(transfer, transfer.sink.response);
}

void CurlSession::Engine::ioRetry(Transfer& transfer, HttpCredential credential) {
    transfer.auth = AttemptAuth{std::move(credential), transfer.challenge->scheme};
    ioAttempt(transfer);
}

void CurlSession::Engine::ioDeliver(Transfer& transfer, HttpResult result) {
    const auto id = transfer.task->taskIdentifier();
    transfer.task->complete(std::move(result));
    ioRelease(id);
}

void CurlSession::Engine::ioRelease(std::uint64_t id) {
    const auto found = transfers_.find(id);
    if (found == transfers_.end()) return;
    auto& transfer = *found->second;
    if (transfer.inMulti) curl_multi_remove_handle(multi_, transfer.easy);
    curl_slist_free_all(transfer.headerList);
    // Recycled handles keep their buffers; the connections live in the multi handle anyway.
    constexpr std::size_t kMaxIdleHandles = 64;
    if (idleEasy_.size() < kMaxIdleHandles) {
        idleEasy_.push_back(transfer.easy);
    } else {
        curl_easy_cleanup(transfer.easy);
    }
    transfers_.erase(found);
}

CurlSession::CurlSession() : engine_(std::make_shared<Engine>()) {
    engine_->start();
}

CurlSession::~CurlSession() {
    engine_->shutdown();
}

std::shared_ptr<DataTask> CurlSession::dataTask(HttpRequest request, HttpCompletion completion) {
    return std::make_shared<CurlTask>(engine_, engine_->nextIdentifier(), std::move(request), std::move(completion));
}

void CurlSession::setChallengeHandler(ChallengeHandler handler) {
    engine_->setChallengeHandler(std::move(handler));
}

Executor& CurlSession::delegateQueue() {
    return engine_->delegate();
}

HttpSession& sharedHttpSession() {
    // Deliberately never destroyed: tasks may still be running while static objects are
    // torn down at exit, and joining threads then is not safe.
    static CurlSession* const session = new CurlSession();
    return *session;
}

}  // namespace platform
