#pragma once
// An observable property with "will set" semantics.
//
// `set(v)` first notifies the owner's will-change signal, then every subscriber with the NEW
// value, and only then stores it: a subscriber that reads `get()` during the notification still
// sees the OLD value. `publisher()` emits the current value at subscription time and then every
// new value. A re-entrant `set` from a subscriber notifies everyone with the inner value, after
// which the outer `set` stores its own value last.
//
// Usage:
//   class SheetViewModel : public platform::ObservableObject {
//   public:
//       platform::Published<bool> isCtaEnabled{*this, false, "isCtaEnabled"};
//   };
//
// The name, when given, is what the stop for a change from a wrong thread names (see
// ObservableObject.hpp).
//
// Thread safety: none; a published property lives on the main queue.

#include <functional>
#include <memory>
#include <string_view>
#include <utility>

#include "platform/ObservableObject.hpp"
#include "platform/Publisher.hpp"
#include "platform/SubscriberList.hpp"

namespace platform {

template <class T>
class Published {
public:
    explicit Published(T initial = T{}) : state_(std::make_shared<State>(std::move(initial))) {}

    // Bound to `owner`: every change fires `owner.objectWillChange()` first.
    // REQUIRES: `name` has static storage (a literal).
    explicit Published(ObservableObject& owner, T initial = T{}, std::string_view name = "a published property")
        : Published(std::move(initial)) {
        state_->owner = owner.core_;
        state_->name = name;
    }

    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;

    [[nodiscard]] const T& get() const { return state_->value; }
    [[nodiscard]] const T& value() const { return state_->value; }
    [[nodiscard]] const T& operator*() const { return state_->value; }
    const T* operator->() const { return &state_->value; }

    void set(T newValue) { State::set(state_, std::move(newValue)); }
    Published& operator=(T newValue) {
        set(std::move(newValue));
        return *this;
    }

    [[nodiscard]] Publisher<T> publisher() const {
        return Publisher<T>([state = state_](typename Publisher<T>::Receiver receive) {
            const T current = state->value;  // a copy: the first delivery may set the property
            return state->subscribers->add(std::move(receive), &current);
        });
    }

    // A setter that holds this property weakly; a no-op once the property is gone.
    [[nodiscard]] std::function<void(T)> setter() const {
        return [weak = std::weak_ptr<State>(state_)](T newValue) {
            if (auto state = weak.lock()) State::set(state, std::move(newValue));
        };
    }

private:
    struct State {
        explicit State(T initial) : value(std::move(initial)) {}

        // Static over a shared_ptr so that the state survives a subscriber that destroys the
        // property (or its owner) during the notification.
        static void set(const std::shared_ptr<State>& state, T newValue) {
            if (auto owner = state->owner.lock()) {
                internal::checkConfinement(*owner, state->name);
                owner->willChange->send(Signal{});
            }
            state->subscribers->send(newValue);
            state->value = std::move(newValue);
        }

        T value;
        std::shared_ptr<SubscriberList<T>> subscribers = SubscriberList<T>::make();
        std::weak_ptr<internal::ObjectCore> owner;
        std::string_view name;
    };

    std::shared_ptr<State> state_;
};

}  // namespace platform
