#pragma once
// Errors of the element library's calls that are not the vault's own.
//
//   TokenizingError  a body holds an element that is not complete (`invalidInput`); the vault
//                    was not called. `invalidApiKey` is never raised by this library.

#include <string_view>

namespace korvane::elements {

enum class TokenizingError { invalidApiKey, invalidInput };

// "TokenizingError.invalidInput", ...
[[nodiscard]] std::string_view toString(TokenizingError error);

}  // namespace korvane::elements
