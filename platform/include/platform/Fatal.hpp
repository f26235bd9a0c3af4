#pragma once
// fatalStop: the one way the libraries end the process.
//
// Only for programming faults of the code that calls a library (a wrong configuration, an API
// used against its contract): writes `message` and a newline to standard error, flushes it and
// aborts. Input from outside the process (a server's answer, a pasted text) must never reach
// it; such input fails through the operation's normal error path instead.
//
// Callable from any thread. Death tests match the message exactly, so callers keep their
// messages as named constants next to the code that stops.

#include <string_view>

namespace platform {

[[noreturn]] void fatalStop(std::string_view message);

}  // namespace platform
