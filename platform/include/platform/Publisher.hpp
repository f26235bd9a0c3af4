#pragma once
// A type-erased stream of values that never fails and never completes.
//
// A `Publisher<T>` is a cheap, copyable description of "how to subscribe"; it holds its
// source strongly, but a subscription (the `AnyCancellable` that `sink` returns) holds the
// source only weakly. Destroying a source therefore ends its subscriptions quietly, and
// cancelling afterwards is a no-op.
//
// Usage:
//   viewModel.amount.publisher()
//       .map([](double dollars) { return dollars > 0; })
//       .assign(viewModel.isCtaEnabled)
//       .store(viewModel.subscriptions);
//
// Thread safety: none; subscribe, deliver and cancel on one thread (the main queue).

#include <concepts>
#include <functional>
#include <optional>
#include <type_traits>
#include <utility>

#include "platform/Cancellable.hpp"

namespace platform {

template <class T>
class Published;

template <class T>
class Publisher {
public:
    using Output = T;
    using Receiver = std::function<void(const T&)>;
    using Subscribe = std::function<AnyCancellable(Receiver)>;

    explicit Publisher(Subscribe subscribe) : subscribe_(std::move(subscribe)) {}

    // Calls `receive` with every value until the returned cancellable ends.
    [[nodiscard]] AnyCancellable sink(Receiver receive) const { return subscribe_(std::move(receive)); }

    // Each value passed through `transform` (called once per value per subscriber).
    template <class F>
    [[nodiscard]] auto map(F transform) const -> Publisher<std::decay_t<std::invoke_result_t<F&, const T&>>> {
        using U = std::decay_t<std::invoke_result_t<F&, const T&>>;
        return Publisher<U>(
            [upstream = *this, transform = std::move(transform)](typename Publisher<U>::Receiver receive) {
                return upstream.sink([transform, receive = std::move(receive)](const T& value) {
                    receive(std::invoke(transform, value));
                });
            });
    }

    // Drops values equal to the previous one seen by the same subscriber.
    [[nodiscard]] Publisher removeDuplicates() const requires std::equality_comparable<T> {
        return Publisher([upstream = *this](Receiver receive) {
            return upstream.sink([last = std::optional<T>(), receive = std::move(receive)](const T& value) mutable {
                if (last && *last == value) return;
                last = value;
                receive(value);
            });
        });
    }

    // Stores every value into `target` through its setter, so that `target`'s own subscribers
    // are notified. Holds `target` weakly: values arriving after it is gone are dropped.
    template <class U>
    requires std::convertible_to<const T&, U>
    [[nodiscard]] AnyCancellable assign(Published<U>& target) const {
        return sink([set = target.setter()](const T& value) { set(U(value)); });
    }

private:
    Subscribe subscribe_;
};

}  // namespace platform
