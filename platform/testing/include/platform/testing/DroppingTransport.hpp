#pragma once
// DroppingTransport: an HTTP session that accepts every task and never sends or answers it, for
// benchmarks and fuzzing where the work before the network is what is measured or exercised
// and recording every request would grow without bound. It only counts the tasks it was given.
//
// Thread safety: none; use it from one thread.

#include <cstdint>
#include <memory>

#include "platform/HttpSession.hpp"
#include "platform/testing/ManualMainQueue.hpp"

namespace platform {

class DroppingTransport final : public HttpSession {
    class Task final : public DataTask {
    public:
        explicit Task(std::uint64_t id) : id_(id) {}
        std::uint64_t taskIdentifier() const override { return id_; }
        void resume() override {}
        void cancel() override {}
        HttpTaskState state() const override { return HttpTaskState::completed; }
        std::shared_ptr<const HttpProgress> progress() const override { return progress_; }

    private:
        std::uint64_t id_;
        std::shared_ptr<HttpProgress> progress_ = std::make_shared<HttpProgress>();
    };

public:
    std::shared_ptr<DataTask> dataTask(HttpRequest, HttpCompletion) override {
        return std::make_shared<Task>(++tasks_);
    }
    void setChallengeHandler(ChallengeHandler) override {}
    Executor& delegateQueue() override { return queue_; }

    [[nodiscard]] std::uint64_t taskCount() const { return tasks_; }

private:
    std::uint64_t tasks_ = 0;
    ManualMainQueue queue_;
};

}  // namespace platform
