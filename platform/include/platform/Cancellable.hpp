#pragma once
// Subscription lifetimes.
//
// Every subscription hands back an `AnyCancellable`; delivery lasts exactly as long as that
// object (or the set it is stored in) lives, or until `cancel()`. Owners keep their
// subscriptions in a `CancellableSet` member, so that they end together with the owner.
//
// Thread safety: none; cancellables belong to the thread of the subscription (the main queue).

#include <cstddef>
#include <functional>
#include <vector>

namespace platform {

class CancellableSet;

class AnyCancellable {
public:
    AnyCancellable() = default;
    // `onCancel` runs at most once: on `cancel()`, on destruction or when replaced by assignment.
    explicit AnyCancellable(std::move_only_function<void()> onCancel);
    ~AnyCancellable();

    AnyCancellable(AnyCancellable&& other) noexcept;
    AnyCancellable& operator=(AnyCancellable&& other) noexcept;
    AnyCancellable(const AnyCancellable&) = delete;
    AnyCancellable& operator=(const AnyCancellable&) = delete;

    // Ends the subscription. Idempotent; safe from inside the subscription's own callback and
    // after the source is gone.
    void cancel();

    // False once cancelled, moved from or default-constructed.
    [[nodiscard]] bool isActive() const { return static_cast<bool>(onCancel_); }

    // Moves this subscription into `set` (or a plain vector), which then owns its lifetime.
    void store(CancellableSet& set) &&;
    void store(std::vector<AnyCancellable>& list) &&;

private:
    std::move_only_function<void()> onCancel_;
};

// A bag of subscriptions that ends them all on destruction or `cancelAll()`.
class CancellableSet {
public:
    CancellableSet() = default;
    ~CancellableSet() { cancelAll(); }
    CancellableSet(CancellableSet&&) noexcept = default;
    CancellableSet& operator=(CancellableSet&& other) noexcept;
    CancellableSet(const CancellableSet&) = delete;
    CancellableSet& operator=(const CancellableSet&) = delete;

    void insert(AnyCancellable cancellable) { items_.push_back(std::move(cancellable)); }

    // Safe when a cancellation adds to or clears this same set: the current items are taken
    // out before any of them is cancelled.
    void cancelAll();

    [[nodiscard]] std::size_t size() const { return items_.size(); }
    [[nodiscard]] bool empty() const { return items_.empty(); }

private:
    std::vector<AnyCancellable> items_;
};

}  // namespace platform
