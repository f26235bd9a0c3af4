#pragma once
// Grapheme-cluster boundaries for the text field's delete key, which removes one
// user-perceived character (an emoji with its modifiers, a letter with its combining marks).

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace platform::internal {

// The start of the cluster that ends at `position` (UTF-16 units); 0 at the start.
[[nodiscard]] std::size_t previousGraphemeBoundary(std::u16string_view text, std::size_t position);

}  // namespace platform::internal
