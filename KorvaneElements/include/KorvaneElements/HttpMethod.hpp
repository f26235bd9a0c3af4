#pragma once
// HttpMethod: the methods a proxy request may name. The raw value is what goes on the wire;
// the case name is what the HTTP helpers' log lines use.

#include <string_view>

namespace korvane::elements {

enum class HttpMethod { get, post, put, delete_, patch, head, options, connect, query, trace };

// "GET", "POST", ..., "TRACE".
[[nodiscard]] std::string_view rawValue(HttpMethod method);
// "get", "post", ..., "delete", ..., "trace".
[[nodiscard]] std::string_view caseName(HttpMethod method);

}  // namespace korvane::elements
