#pragma once
// Two-way results. Every asynchronous operation of the product reports success or failure
// as a value; nothing is thrown across a module boundary.

#include <expected>
#include <utility>

namespace platform {

template <class T, class E>
using Result = std::expected<T, E>;

// Shorthand for building the failure side: `return platform::failure(HttpError{...});`
template <class E>
[[nodiscard]] constexpr std::unexpected<std::decay_t<E>> failure(E&& error) {
    return std::unexpected<std::decay_t<E>>(std::forward<E>(error));
}

}  // namespace platform
