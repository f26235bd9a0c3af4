#pragma once
// A hot stream: `send` delivers to the subscribers present at that moment and keeps nothing.
//
// Usage:
//   platform::PassthroughSubject<ElementEvent> subject;
//   auto c = subject.publisher().sink([](const ElementEvent& e) { ... });
//   subject.send(event);
//
// Thread safety: none; a subject lives on one thread (the main queue).

#include <memory>
#include <utility>

#include "platform/Publisher.hpp"
#include "platform/SubscriberList.hpp"

namespace platform {

template <class T>
class PassthroughSubject {
public:
    PassthroughSubject() = default;
    PassthroughSubject(const PassthroughSubject&) = delete;
    PassthroughSubject& operator=(const PassthroughSubject&) = delete;

    // Subscribers added while this runs don't receive `value`.
    void send(const T& value) { subscribers_->send(value); }

    [[nodiscard]] Publisher<T> publisher() const {
        return Publisher<T>(
            [list = subscribers_](typename Publisher<T>::Receiver receive) { return list->add(std::move(receive)); });
    }

    [[nodiscard]] AnyCancellable sink(typename Publisher<T>::Receiver receive) const {
        return subscribers_->add(std::move(receive));
    }

    [[nodiscard]] std::size_t subscriberCount() const { return subscribers_->size(); }

private:
    std::shared_ptr<SubscriberList<T>> subscribers_ = SubscriberList<T>::make();
};

}  // namespace platform
