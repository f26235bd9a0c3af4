// The process-wide clock, main queue and background pool.
//
// Installed objects are held by shared_ptr under a lock, with an atomic raw pointer beside
// them for the by-reference accessors, so that reads from background threads are not data
// races even while a test swaps an object in.

#include <algorithm>
#include <atomic>
#include <mutex>
#include <thread>
#include <utility>

#include "platform/Clock.hpp"
#include "platform/MainQueue.hpp"
#include "platform/ThreadPool.hpp"

namespace platform {

Clock::TimePoint SystemClock::now() const {
    return std::chrono::system_clock::now();
}

namespace {

template <class T>
class Slot {
public:
    explicit Slot(std::shared_ptr<T> initial) { set(std::move(initial)); }

    T& get() const { return *raw_.load(std::memory_order_acquire); }

    std::shared_ptr<T> shared() const {
        std::lock_guard lock(mutex_);
        return owner_;
    }

    void set(std::shared_ptr<T> value) {
        std::shared_ptr<T> previous;
        {
            std::lock_guard lock(mutex_);
            previous = std::exchange(owner_, std::move(value));
            raw_.store(owner_.get(), std::memory_order_release);
        }
        // `previous` is released outside the lock: a queue's destructor drops its tasks, and a
        // task's destructor may read the slot again.
    }

private:
    mutable std::mutex mutex_;
    std::shared_ptr<T> owner_;
    std::atomic<T*> raw_{nullptr};
};

struct ProcessWide {
    Slot<Clock> clock{std::make_shared<SystemClock>()};
    Slot<Executor> mainQueue{std::make_shared<MainQueue>()};
};

ProcessWide& processWide() {
    static ProcessWide instance;
    return instance;
}

}  // namespace

Clock& clock() {
    return processWide().clock.get();
}

std::shared_ptr<Clock> sharedClock() {
    return processWide().clock.shared();
}

void setClock(std::shared_ptr<Clock> clock) {
    processWide().clock.set(clock ? std::move(clock) : std::make_shared<SystemClock>());
}

Executor& mainQueue() {
    return processWide().mainQueue.get();
}

std::shared_ptr<Executor> sharedMainQueue() {
    return processWide().mainQueue.shared();
}

void setMainQueue(std::shared_ptr<Executor> queue) {
    processWide().mainQueue.set(queue ? std::move(queue) : std::make_shared<MainQueue>());
}

ThreadPool& backgroundPool() {
    // The process-wide slots are constructed first so that they are destroyed after the pool:
    // tasks the pool drains at exit may still post to the main queue.
    (void)processWide();
    static ThreadPool pool(std::clamp<std::size_t>(std::thread::hardware_concurrency(), 2, 4), "tovi-background");
    return pool;
}

}  // namespace platform
