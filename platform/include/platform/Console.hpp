#pragma once
// Console lines: the wallet layer's single-line diagnostics. They go to standard output unless
// a `ConsoleCapture` is alive, in which case they are collected for a test to read.
//
// Thread safety: `consoleLine` may be called from any thread; lines are never interleaved.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// Writes `line` and a newline, atomically with respect to other console lines.
void consoleLine(std::string_view line);

// While an instance lives, console lines are recorded instead of printed. Captures nest: the
// innermost one receives the lines, and the previous one is restored on destruction.
class ConsoleCapture {
public:
    struct State;  // opaque; shared with the writer side

    ConsoleCapture();
    ~ConsoleCapture();
    ConsoleCapture(const ConsoleCapture&) = delete;
    ConsoleCapture& operator=(const ConsoleCapture&) = delete;

    // A copy, so that it is safe to read while other threads still write.
    [[nodiscard]] std::vector<std::string> lines() const;
    void clear();
    // The lines recorded so far, removed from the capture at once (none can slip between a read
    // and a clear), for a reader that forwards them as they come.
    [[nodiscard]] std::vector<std::string> take();

private:
    std::shared_ptr<State> state_;
    std::shared_ptr<State> previous_;
};

}  // namespace platform
