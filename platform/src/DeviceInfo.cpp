#include "platform/DeviceInfo.hpp"

#include <cstdlib>
#include <mutex>

namespace platform {
namespace {

std::mutex& factsMutex() {
    static std::mutex mutex;
    return mutex;
}

DeviceInfo& storedInfo() {
    static DeviceInfo info;
    return info;
}

std::filesystem::path& cachesOverride() {
    static std::filesystem::path path;
    return path;
}

std::filesystem::path defaultCachesDirectory() {
    // XDG base directory rules: a relative XDG_CACHE_HOME is invalid and must be ignored.
    if (const char* xdg = std::getenv("XDG_CACHE_HOME"); xdg && *xdg) {
        std::filesystem::path path(xdg);
        if (path.is_absolute()) return path;
    }
    if (const char* home = std::getenv("HOME"); home && *home) return std::filesystem::path(home) / ".cache";
    std::error_code error;
    auto temp = std::filesystem::temp_directory_path(error);
    return error ? std::filesystem::path("/tmp") : temp;
}

}  // namespace

DeviceInfo deviceInfo() {
    std::lock_guard lock(factsMutex());
    return storedInfo();
}

void setDeviceInfo(DeviceInfo info) {
    std::lock_guard lock(factsMutex());
    storedInfo() = std::move(info);
}

std::filesystem::path cachesDirectory() {
    {
        std::lock_guard lock(factsMutex());
        if (!cachesOverride().empty()) return cachesOverride();
    }
    return defaultCachesDirectory();
}

void setCachesDirectory(std::filesystem::path directory) {
    std::lock_guard lock(factsMutex());
    cachesOverride() = std::move(directory);
}

}  // namespace platform
