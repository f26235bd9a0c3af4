#pragma once
// Wall-clock time, behind a seam so that tests can pin "now".
//
// Everything that compares a date with the present (card expiry, log timestamps, the virtual
// time of the manual main queue) reads `platform::clock().now()` rather than the system clock.

#include <chrono>
#include <memory>

namespace platform {

// Thread safety: implementations answer `now()` from any thread.
class Clock {
public:
    using TimePoint = std::chrono::system_clock::time_point;

    virtual ~Clock() = default;
    [[nodiscard]] virtual TimePoint now() const = 0;
};

// The real wall clock.
class SystemClock final : public Clock {
public:
    [[nodiscard]] TimePoint now() const override;
};

// The process-wide clock; a `SystemClock` until a host or a test installs another one.
//
// REQUIRES: the reference is not kept across a `setClock` call. Code that must hold on to the
// clock (for example from another thread) takes `sharedClock()` instead.
[[nodiscard]] Clock& clock();
[[nodiscard]] std::shared_ptr<Clock> sharedClock();

// Installs `clock` as the process-wide clock; a null pointer restores the system clock.
// Meant for start-up and test set-up, while no other thread is reading the clock by reference.
void setClock(std::shared_ptr<Clock> clock);

}  // namespace platform
