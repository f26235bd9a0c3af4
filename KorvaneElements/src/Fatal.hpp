#pragma once
// The element library's fatal stops: the message goes to standard error, then the process
// aborts. Only the programming faults that the library documents end up here.

#include <string_view>

namespace korvane::elements::internal {

[[noreturn]] void fatalStop(std::string_view message);

}  // namespace korvane::elements::internal
