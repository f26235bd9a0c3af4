#pragma once
// ValueKey: what it takes to read a value out of an element or a reference. Only the library's
// own tokenize, proxy and reveal code can make one, so a host passes elements and references
// to those calls but can never read a card number, a code or an expiry, revealed and mirrored
// values included.

namespace korvane::elements {

namespace internal {
struct ValueKeys;
}

class ValueKey {
    ValueKey() = default;
    friend struct internal::ValueKeys;
};

}  // namespace korvane::elements
