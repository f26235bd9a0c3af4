#pragma once
// The call machinery shared by the sandbox's operation files: latency, scripted failures,
// cancellation and the one posting of each result.

#include <fmt/format.h>

#include <atomic>
#include <chrono>
#include <string>
#include <utility>

#include "SandboxBackend.hpp"
#include "platform/Clock.hpp"

namespace tovi::sandbox::internal {

inline std::size_t indexOf(SandboxOperation operation) {
    return static_cast<std::size_t>(operation);
}

inline ToviApiError apiError(std::string message, std::string detail) {
    return ToviApiError{.humanReadableMessage = std::move(message), .detail = std::move(detail)};
}

// "2026-11-23T09:41:07.250Z": the form the backend writes its timestamps in.
inline std::string timestamp(platform::Clock::TimePoint time) {
    using namespace std::chrono;
    const auto millis = duration_cast<milliseconds>(time.time_since_epoch()).count();
    const auto days = sys_days(floor<std::chrono::days>(time));
    const year_month_day date(days);
    const hh_mm_ss<milliseconds> clock(milliseconds(millis) - duration_cast<milliseconds>(days.time_since_epoch()));
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}.{:03}Z", static_cast<int>(date.year()),
                       static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()), clock.hours().count(),
                       clock.minutes().count(), clock.seconds().count(), clock.subseconds().count());
}

template <class T>
void SandboxBackend::run(SandboxOperation operation, ToviCall call, ToviCompletion<T> completion, Work<T> work) {
    std::chrono::milliseconds latency{};
    std::optional<std::string> scriptedFailure;
    {
        std::lock_guard lock(mutex_);
        events_.push_back({operation, SandboxEvent::Kind::started});
        latency = latency_[indexOf(operation)];
        if (auto& failure = failures_[indexOf(operation)]) {
            scriptedFailure = failure->message;
            if (failure->remaining > 0 && --failure->remaining == 0) failure.reset();
        }
    }

    // Whoever settles first (the work, a scripted failure or a cancellation) posts the result;
    // later attempts are ignored.
    struct Pending {
        std::atomic<bool> settled{false};
        platform::Executor* queue = nullptr;
        ToviCompletion<T> completion;
    };
    auto pending = std::make_shared<Pending>();
    pending->queue = &call.queue;
    pending->completion = std::move(completion);
    auto settle = [self = shared_from_this(), pending, operation](ToviResult<T> result) {
        if (pending->settled.exchange(true)) return;
        self->record(operation, result ? SandboxEvent::Kind::succeeded : SandboxEvent::Kind::failed);
        pending->queue->post([completion = std::move(pending->completion), result = std::move(result)]() mutable {
            completion(std::move(result));
        });
    };

    call.cancellation.onCancel(
        [settle] { settle(platform::failure(apiError("The request was cancelled.", "cancelled"))); });

    auto fire = [pending, settle, scriptedFailure, operation, work = std::move(work)]() mutable {
        if (pending->settled) return;
        if (scriptedFailure) {
            return settle(platform::failure(
                apiError(*scriptedFailure, fmt::format("sandbox: scripted failure of {}", operationName(operation)))));
        }
        work([settle](ToviResult<T> result) mutable { settle(std::move(result)); });
    };
    // Already cancelled: nothing is left to wait for.
    if (pending->settled) return;
    if (latency.count() > 0) {
        timers_.postAfter(latency, std::move(fire));
    } else {
        fire();
    }
}

template <class T>
void SandboxBackend::runNow(SandboxOperation operation, ToviCall call, ToviCompletion<T> completion,
                            std::move_only_function<ToviResult<T>()> work) {
    run<T>(operation, call, std::move(completion),
           [work = std::move(work)](ToviCompletion<T> done) mutable { done(work()); });
}

}  // namespace tovi::sandbox::internal
