#pragma once
// HTTPMethod: the methods a request builder knows, with their wire text.
//
// A builder carries its method as text; `execute` turns it into one of these and stops the
// process on any other text (see URLSessionRequestBuilder.hpp).

#include <optional>
#include <string_view>

namespace korvane {

// Cases in declaration order, each with its raw value.
enum class HTTPMethod { options, get, head, post, put, patch, delete_, trace, connect };

// "OPTIONS", "GET", "HEAD", "POST", "PUT", "PATCH", "DELETE", "TRACE", "CONNECT".
[[nodiscard]] std::string_view rawValue(HTTPMethod method);

// The case whose raw value is exactly `text` (case-sensitive: "get" is not a method).
[[nodiscard]] std::optional<HTTPMethod> httpMethodFromRawValue(std::string_view text);

}  // namespace korvane
