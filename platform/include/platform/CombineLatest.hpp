#pragma once
// Combining the latest values of several publishers.
//
// The combined publisher emits nothing until every input has produced a value; from then on
// each input value emits the tuple of the latest values of all inputs. Two published
// properties therefore give one emission at subscription and one per later change.
//
// Usage:
//   platform::combineLatest(vm.selection.publisher(), vm.paymentMethod.publisher())
//       .map([](const auto& latest) { const auto& [selection, method] = latest; return ...; })
//       .assign(vm.isCtaEnabled)
//       .store(vm.subscriptions);
//
// Thread safety: none; as for every publisher.

#include <cstddef>
#include <memory>
#include <optional>
#include <tuple>
#include <utility>
#include <vector>

#include "platform/Cancellable.hpp"
#include "platform/Publisher.hpp"

namespace platform {

namespace combine_latest_internal {

template <class... Ts>
struct State {
    using Tuple = std::tuple<Ts...>;
    explicit State(typename Publisher<Tuple>::Receiver r) : receive(std::move(r)) {}

    void emitIfComplete() {
        if (!std::apply([](const auto&... latest) { return (latest.has_value() && ...); }, latest)) return;
        const Tuple values = std::apply([](const auto&... latest) { return Tuple(*latest...); }, latest);
        receive(values);
    }

    std::tuple<std::optional<Ts>...> latest;
    typename Publisher<Tuple>::Receiver receive;
};

template <class... Ts, std::size_t... Is>
Publisher<std::tuple<Ts...>> combine(std::tuple<Publisher<Ts>...> inputs, std::index_sequence<Is...>) {
    using Tuple = std::tuple<Ts...>;
    return Publisher<Tuple>([inputs = std::move(inputs)](typename Publisher<Tuple>::Receiver receive) {
        // Each input's callback owns the shared state; the combined cancellable owns the input
        // subscriptions. Cancelling it releases the callbacks, and with them the state.
        auto state = std::make_shared<State<Ts...>>(std::move(receive));
        std::vector<AnyCancellable> subscriptions;
        subscriptions.reserve(sizeof...(Ts));
        (subscriptions.push_back(std::get<Is>(inputs).sink([state](const Ts& value) {
            std::get<Is>(state->latest) = value;
            state->emitIfComplete();
        })),
         ...);
        return AnyCancellable([subscriptions = std::move(subscriptions)]() mutable {
            for (auto& subscription : subscriptions) subscription.cancel();
        });
    });
}

}  // namespace combine_latest_internal

template <class A, class B>
[[nodiscard]] Publisher<std::tuple<A, B>> combineLatest(Publisher<A> a, Publisher<B> b) {
    return combine_latest_internal::combine<A, B>(std::tuple(std::move(a), std::move(b)),
                                                  std::index_sequence_for<A, B>{});
}

template <class A, class B, class C>
[[nodiscard]] Publisher<std::tuple<A, B, C>> combineLatest(Publisher<A> a, Publisher<B> b, Publisher<C> c) {
    return combine_latest_internal::combine<A, B, C>(std::tuple(std::move(a), std::move(b), std::move(c)),
                                                     std::index_sequence_for<A, B, C>{});
}

// The latest values passed to `transform` as separate arguments.
template <class A, class B, class F>
[[nodiscard]] auto combineLatest(Publisher<A> a, Publisher<B> b, F transform) {
    return combineLatest(std::move(a), std::move(b))
        .map([transform = std::move(transform)](const std::tuple<A, B>& latest) {
            return std::apply(transform, latest);
        });
}

template <class A, class B, class C, class F>
[[nodiscard]] auto combineLatest(Publisher<A> a, Publisher<B> b, Publisher<C> c, F transform) {
    return combineLatest(std::move(a), std::move(b), std::move(c))
        .map([transform = std::move(transform)](const std::tuple<A, B, C>& latest) {
            return std::apply(transform, latest);
        });
}

}  // namespace platform
