#pragma once
// The runtime's fatal stops: programming faults that the client refuses to continue from
// (an unprocessable form value, an unsupported method, media type or response type).
//
// Writes "<source>: Fatal error: <message>" and a newline to standard error, then aborts.
// Callable from any thread.

#include <string_view>

namespace korvane {

inline constexpr std::string_view kRuntimeSource = "Korvane/URLSessionImplementations";

[[noreturn]] void fatalError(std::string_view message, std::string_view source = kRuntimeSource);

}  // namespace korvane
