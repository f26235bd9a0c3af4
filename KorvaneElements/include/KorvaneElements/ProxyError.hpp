#pragma once
// Errors of `KorvaneElements::proxy`:
//   invalidRequest  no response came back (refused, timed out, cut off)
//   invalidInput    the body holds an element that is not complete; nothing was sent

#include <string_view>

namespace korvane::elements {

enum class ProxyError { invalidRequest, invalidInput };

// "ProxyError.invalidRequest", ...
[[nodiscard]] std::string_view toString(ProxyError error);

}  // namespace korvane::elements
