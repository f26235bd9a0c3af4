#include "platform/Console.hpp"

#include <cstdio>
#include <mutex>
#include <utility>

namespace platform {

struct ConsoleCapture::State {
    std::vector<std::string> lines;
};

namespace {

std::mutex& consoleMutex() {
    static std::mutex mutex;
    return mutex;
}

// Guarded by consoleMutex().
std::shared_ptr<ConsoleCapture::State>& activeCapture() {
    static std::shared_ptr<ConsoleCapture::State> active;
    return active;
}

}  // namespace

void consoleLine(std::string_view line) {
    std::lock_guard lock(consoleMutex());
    if (auto& capture = activeCapture()) {
        capture->lines.emplace_back(line);
        return;
    }
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

ConsoleCapture::ConsoleCapture() : state_(std::make_shared<State>()) {
    std::lock_guard lock(consoleMutex());
    previous_ = std::exchange(activeCapture(), state_);
}

ConsoleCapture::~ConsoleCapture() {
    std::lock_guard lock(consoleMutex());
    activeCapture() = previous_;
}

std::vector<std::string> ConsoleCapture::lines() const {
    std::lock_guard lock(consoleMutex());
    return state_->lines;
}

std::vector<std::string> ConsoleCapture::take() {
    std::lock_guard lock(consoleMutex());
    return std::exchange(state_->lines, {});
}

void ConsoleCapture::clear() {
    std::lock_guard lock(consoleMutex());
    state_->lines.clear();
}

}  // namespace platform
