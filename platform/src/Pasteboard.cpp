#include "platform/Pasteboard.hpp"

#include <mutex>

namespace platform {

namespace {
std::mutex& pasteboardMutex() {
    static std::mutex mutex;
    return mutex;
}
std::optional<std::string>& pasteboardValue() {
    static std::optional<std::string> value;
    return value;
}
}  // namespace

Pasteboard& Pasteboard::general() {
    static Pasteboard instance;
    return instance;
}

std::optional<std::string> Pasteboard::string() const {
    std::lock_guard lock(pasteboardMutex());
    return pasteboardValue();
}

void Pasteboard::setString(std::optional<std::string> value) {
    std::lock_guard lock(pasteboardMutex());
    pasteboardValue() = std::move(value);
}

}  // namespace platform
