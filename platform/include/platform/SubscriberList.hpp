#pragma once
// The subscriber bookkeeping shared by every observable source (published properties,
// passthrough subjects, the will-change signal of observable objects).
//
// Re-entrancy contract, relied on by all sources:
// - A delivery works on a snapshot: subscribers added during it don't receive that value.
// - A subscriber cancelled during a delivery (by itself or by another) isn't called again, also
//   not later in the same delivery.
// - A callback is never destroyed while it runs; a cancelled one is released when it returns.
// - Cancelling after the list is gone is a no-op.
//
// Thread safety: none; one thread (the main queue) owns a list and all its subscriptions.

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "platform/Cancellable.hpp"

namespace platform {

template <class T>
class SubscriberList : public std::enable_shared_from_this<SubscriberList<T>> {
public:
    using Receiver = std::function<void(const T&)>;

    // Always own a list through a shared_ptr: subscriptions refer to it weakly.
    [[nodiscard]] static std::shared_ptr<SubscriberList> make() {
        return std::shared_ptr<SubscriberList>(new SubscriberList());
    }

    ~SubscriberList() {
        // Closures may own objects whose destructors cancel other subscriptions of this list;
        // by now those see an expired list and only mark themselves.
        auto entries = std::exchange(entries_, {});
        for (auto& entry : entries) deactivate(*entry);
    }

    SubscriberList(const SubscriberList&) = delete;
    SubscriberList& operator=(const SubscriberList&) = delete;

    // Adds `receive`; if `initial` is given, delivers it to the new subscriber alone first.
    [[nodiscard]] AnyCancellable add(Receiver receive, const T* initial = nullptr) {
        auto entry = std::make_shared<Entry>(std::move(receive));
        entries_.push_back(entry);
        AnyCancellable cancellable([list = this->weak_from_this(), weakEntry = std::weak_ptr<Entry>(entry)] {
            auto entry = weakEntry.lock();
            if (!entry) return;
            if (auto owner = list.lock()) owner->remove(entry.get());
            deactivate(*entry);
        });
        if (initial != nullptr) {
            auto keepAlive = this->shared_from_this();
            deliver(*entry, *initial);
        }
        return cancellable;
    }

    // Delivers `value` to every subscriber present now, in subscription order.
    void send(const T& value) {
        auto keepAlive = this->shared_from_this();
        auto snapshot = entries_;
        for (auto& entry : snapshot) deliver(*entry, value);
    }

    [[nodiscard]] bool empty() const { return entries_.empty(); }
    [[nodiscard]] std::size_t size() const { return entries_.size(); }

private:
    struct Entry {
        explicit Entry(Receiver r) : receive(std::move(r)) {}
        Receiver receive;
        bool active = true;
        int running = 0;  // depth of calls in progress; a subscriber may re-enter its source
    };

    SubscriberList() = default;

    static void deliver(Entry& entry, const T& value) {
        if (!entry.active) return;
        ++entry.running;
        entry.receive(value);
        --entry.running;
        if (!entry.active && entry.running == 0) releaseCallback(entry);
    }

    static void deactivate(Entry& entry) {
        entry.active = false;
        if (entry.running == 0) releaseCallback(entry);
    }

    static void releaseCallback(Entry& entry) {
        // Moved out first so that the closure's destructor runs with the entry in a stable state.
        auto dying = std::exchange(entry.receive, nullptr);
    }

    void remove(const Entry* entry) {
        std::erase_if(entries_, [entry](const auto& e) { return e.get() == entry; });
    }

    std::vector<std::shared_ptr<Entry>> entries_;
};

}  // namespace platform
