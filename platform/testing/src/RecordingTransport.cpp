#include "platform/testing/RecordingTransport.hpp"

#include "platform/internal/HttpTaskBase.hpp"

#include <algorithm>

namespace platform {

class RecordingTransport::RecordedTask final : public http_internal::HttpTaskBase {
public:
    RecordedTask(RecordingTransport& owner, std::uint64_t id, HttpRequest request, HttpCompletion completion)
        : HttpTaskBase(id, std::move(completion), owner.executor_), owner_(owner), request_(std::move(request)) {}

protected:
    void onResume() override { owner_.started(std::static_pointer_cast<RecordedTask>(shared_from_this()), request_); }
    void onCancel() override { owner_.cancelled(taskIdentifier()); }

private:
    RecordingTransport& owner_;
    const HttpRequest request_;
};

RecordingTransport::RecordingTransport(Executor* completionExecutor) : executor_(completionExecutor) {}

RecordingTransport::~RecordingTransport() = default;

void RecordingTransport::enqueueResult(HttpResult result) {
    std::lock_guard lock(mutex_);
    canned_.push_back(std::move(result));
}

void RecordingTransport::enqueueResponse(int status, std::string body, HttpHeaders headers) {
    enqueueResult(HttpResponse{status, std::move(headers), std::move(body), {}});
}

void RecordingTransport::enqueueError(HttpErrorCode code, std::string message) {
    enqueueResult(failure(HttpError{code, std::move(message), 0}));
}

void RecordingTransport::setHandler(Handler handler) {
    std::lock_guard lock(mutex_);
    handler_ = std::move(handler);
}

void RecordingTransport::holdResponses(bool hold) {
    std::lock_guard lock(mutex_);
    hold_ = hold;
}

std::size_t RecordingTransport::heldCount() const {
    std::lock_guard lock(mutex_);
    return held_.size();
}

bool RecordingTransport::releaseNext() {
    std::shared_ptr<RecordedTask> task;
    HttpResult result;
    {
        std::lock_guard lock(mutex_);
        if (held_.empty()) return false;
        task = std::move(held_.front().first);
        result = std::move(held_.front().second);
        held_.pop_front();
    }
    task->complete(std::move(result));
    return true;
}

bool RecordingTransport::release(std::uint64_t taskIdentifier) {
    std::shared_ptr<RecordedTask> task;
    HttpResult result;
    {
        std::lock_guard lock(mutex_);
        const auto found = std::find_if(held_.begin(), held_.end(),
                                        [&](const auto& h) { return h.first->taskIdentifier() == taskIdentifier; });
        if (found == held_.end()) return false;
        task = std::move(found->first);
        result = std::move(found->second);
        held_.erase(found);
    }
    task->complete(std::move(result));
    return true;
}

void RecordingTransport::releaseAll() {
    while (releaseNext()) {
    }
}

std::vector<HttpRequest> RecordingTransport::requests() const {
    std::lock_guard lock(mutex_);
    return requests_;
}

std::size_t RecordingTransport::requestCount() const {
    std::lock_guard lock(mutex_);
    return requests_.size();
}

std::optional<ChallengeAnswer> RecordingTransport::challenge(const AuthChallenge& challenge) const {
    ChallengeHandler handler;
    {
        std::lock_guard lock(mutex_);
        handler = challengeHandler_;
    }
    if (!handler) return std::nullopt;
    return handler(challenge);
}

std::shared_ptr<DataTask> RecordingTransport::dataTask(HttpRequest request, HttpCompletion completion) {
    std::uint64_t id = 0;
    {
        std::lock_guard lock(mutex_);
        id = nextIdentifier_++;
    }
    return std::make_shared<RecordedTask>(*this, id, std::move(request), std::move(completion));
}

void RecordingTransport::setChallengeHandler(ChallengeHandler handler) {
    std::lock_guard lock(mutex_);
    challengeHandler_ = std::move(handler);
}

Executor& RecordingTransport::delegateQueue() {
    return executor_ != nullptr ? *executor_ : inlineExecutor_;
}

void RecordingTransport::cancelled(std::uint64_t taskIdentifier) {
    std::lock_guard lock(mutex_);
    std::erase_if(held_, [&](const auto& h) { return h.first->taskIdentifier() == taskIdentifier; });
}

void RecordingTransport::started(const std::shared_ptr<RecordedTask>& task, const HttpRequest& request) {
    HttpResult result;
    Handler handler;
    {
        std::lock_guard lock(mutex_);
        requests_.push_back(request);
        if (!canned_.empty()) {
            result = std::move(canned_.front());
            canned_.pop_front();
        } else {
            handler = handler_;
            if (!handler) result = failure(HttpError{HttpErrorCode::other, "no response queued for " + request.url, 0});
        }
    }
    // The handler runs unlocked so that it may use the transport itself.
    if (handler) result = handler(request);
    {
        std::lock_guard lock(mutex_);
        if (hold_) {
            held_.emplace_back(task, std::move(result));
            return;
        }
    }
    task->complete(std::move(result));
}

}  // namespace platform
