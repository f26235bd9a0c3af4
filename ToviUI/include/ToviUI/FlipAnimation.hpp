#pragma once
// flip: turns a view over (a flip from the right, 0.5 s) whenever `item` changes.
//
// The content is wrapped in a "FlipWrapper" group that carries a transition tag; a host that
// maps the tree to native views runs the platform's view transition on the wrapper whenever
// the tag's trigger differs from the previous tree's. The trigger is the hash of `item`, so
// equal values never flip.

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>

#include "platform/view/Modifiers.hpp"
#include "platform/view/Node.hpp"

namespace tovi {

inline constexpr double flipDuration = 0.5;
// The platform's option bits for a transition that flips from the right.
inline constexpr std::uint64_t flipFromRightOption = 0x200000;

[[nodiscard]] platform::view::Node flipWrapper(platform::view::Node content, std::size_t trigger);

template <class T>
requires requires(const T& v) {
    { std::hash<T>{}(v) } -> std::convertible_to<std::size_t>;
}
[[nodiscard]] platform::view::Node flip(platform::view::Node content, const T& item) {
    return flipWrapper(std::move(content), std::hash<T>{}(item));
}

}  // namespace tovi
