#pragma once
// The library's side of ValueKey: the one place keys to element values are made.

#include "KorvaneElements/ValueKey.hpp"

namespace korvane::elements::internal {

struct ValueKeys {
    [[nodiscard]] static ValueKey make() { return ValueKey{}; }
};

}  // namespace korvane::elements::internal
