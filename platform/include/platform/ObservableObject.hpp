#pragma once
// Base class of view models: one "will change" signal for the whole object.
//
// A `Published<T>` built with the owning object as first argument fires the owner's
// `objectWillChange()` before each of its changes, which is what a screen listens to in order
// to rebuild.
//
// Thread safety: none; an observable object lives on the main queue.

#include <memory>
#include <variant>

#include "platform/Publisher.hpp"
#include "platform/SubscriberList.hpp"

namespace platform {

// The value of signals that carry no data.
using Signal = std::monostate;

class ObservableObject {
public:
    ObservableObject(const ObservableObject&) = delete;
    ObservableObject& operator=(const ObservableObject&) = delete;

    // Emits once before any bound property changes (never replays).
    [[nodiscard]] Publisher<Signal> objectWillChange() const {
        return Publisher<Signal>(
            [list = willChange_](Publisher<Signal>::Receiver receive) { return list->add(std::move(receive)); });
    }

    // For state that is not held in a Published property.
    void sendWillChange() { willChange_->send(Signal{}); }

protected:
    ObservableObject() = default;
    ~ObservableObject() = default;

private:
    template <class T>
    friend class Published;

    std::shared_ptr<SubscriberList<Signal>> willChange_ = SubscriberList<Signal>::make();
};

}  // namespace platform
