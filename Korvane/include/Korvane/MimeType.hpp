#pragma once
// MIME types by file extension, from a table of our own (the phone asks its type registry).
// Matching ignores ASCII case; an unknown or missing extension gives
// "application/octet-stream".

#include <string>
#include <string_view>

#include "platform/Url.hpp"

namespace korvane {

inline constexpr std::string_view kDefaultMimeType = "application/octet-stream";

[[nodiscard]] std::string mimeTypeForExtension(std::string_view extension);
[[nodiscard]] std::string mimeTypeForFile(const platform::Url& fileUrl);

}  // namespace korvane
