#pragma once
// Base class of view models: one "will change" signal for the whole object.
//
// A `Published<T>` built with the owning object as first argument fires the owner's
// `objectWillChange()` before each of its changes, which is what a screen listens to in order
// to rebuild.
//
// A screen that shows an object confines it to the screen's thread (`confineToCurrentThread`):
// from then on a change made on any other thread is a programming fault and stops the process
// with a message naming the property, because a view reading the object meanwhile would see
// it half changed.
//
// Thread safety: none; an observable object lives on the main queue.

#include <atomic>
#include <memory>
#include <string_view>
#include <thread>
#include <variant>

#include "platform/Publisher.hpp"
#include "platform/SubscriberList.hpp"

namespace platform {

// The value of signals that carry no data.
using Signal = std::monostate;

namespace internal {

// What an object shares with its published properties, which outlive neither.
struct ObjectCore {
    std::shared_ptr<SubscriberList<Signal>> willChange = SubscriberList<Signal>::make();
    // The default id while no screen shows the object.
    std::atomic<std::thread::id> confinedTo{};
};

// Stops the process when `core` is confined to a thread other than the calling one.
// `property` names what changed, for the message.
void checkConfinement(const ObjectCore& core, std::string_view property);

}  // namespace internal

class ObservableObject {
public:
    ObservableObject(const ObservableObject&) = delete;
    ObservableObject& operator=(const ObservableObject&) = delete;

    // Emits once before any bound property changes (never replays).
    [[nodiscard]] Publisher<Signal> objectWillChange() const {
        return Publisher<Signal>(
            [list = core_->willChange](Publisher<Signal>::Receiver receive) { return list->add(std::move(receive)); });
    }

    // For state that is not held in a Published property.
    void sendWillChange() {
        internal::checkConfinement(*core_, "sendWillChange()");
        core_->willChange->send(Signal{});
    }

    // From now on, changes must come from the calling thread.
    void confineToCurrentThread() const { core_->confinedTo.store(std::this_thread::get_id()); }

protected:
    ObservableObject() = default;
    ~ObservableObject() = default;

private:
    template <class T>
    friend class Published;

    std::shared_ptr<internal::ObjectCore> core_ = std::make_shared<internal::ObjectCore>();
};

}  // namespace platform
