#pragma once
// Facts about the host application and the device, as a phone would report them. A host sets
// them once at start-up; telemetry and the wallet layer read them. Absent fields mean the
// platform could not tell, and readers substitute their own fallbacks.
//
// Thread safety: `deviceInfo()` and `setDeviceInfo()` may be called from any thread.

#include <filesystem>
#include <optional>
#include <string>

namespace platform {

struct DeviceInfo {
    std::optional<std::string> bundleIdentifier;
    std::optional<std::string> shortVersion;  // the user-facing version, "1.4.2"
    std::optional<std::string> buildVersion;  // the build number, "512"
    std::optional<std::string> vendorIdentifier;
    std::string deviceName = "Linux";

    friend bool operator==(const DeviceInfo&, const DeviceInfo&) = default;
};

[[nodiscard]] DeviceInfo deviceInfo();
void setDeviceInfo(DeviceInfo info);

// The per-user caches directory: $XDG_CACHE_HOME when it is an absolute path, otherwise
// $HOME/.cache, otherwise the system temporary directory. A host may override it (for
// example with its own sandbox folder); an empty path restores the default rule.
// The directory is not created here: writers create what they need below it.
[[nodiscard]] std::filesystem::path cachesDirectory();
void setCachesDirectory(std::filesystem::path directory);

}  // namespace platform
