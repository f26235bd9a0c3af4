#pragma once
// Base64 (RFC 4648, standard alphabet, with padding).

#include <optional>
#include <string>
#include <string_view>

namespace platform {

[[nodiscard]] std::string base64Encode(std::string_view bytes);

// Strict, like the phone's default decoder: the length must be a multiple of four, padding only
// at the end, no white space and no characters outside the alphabet. Anything else is absent.
[[nodiscard]] std::optional<std::string> base64Decode(std::string_view text);

}  // namespace platform
