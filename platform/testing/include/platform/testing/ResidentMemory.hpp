#pragma once
// ResidentMemory: the process's resident size, for soaks that check that memory stays flat.
//
// Under AddressSanitizer or ThreadSanitizer freed memory waits in quarantines and per-thread
// caches (hundreds of megabytes), so the resident size measures them rather than the program;
// there `kResidentSizeIsTheProgram` is false and a soak prints the figure without checking it.

#include <fstream>
#include <string>

namespace platform::testing {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define PLATFORM_TESTING_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define PLATFORM_TESTING_SANITIZED 1
#endif
#endif
#ifdef PLATFORM_TESTING_SANITIZED
inline constexpr bool kResidentSizeIsTheProgram = false;
#else
inline constexpr bool kResidentSizeIsTheProgram = true;
#endif

// VmRSS of this process in megabytes; -1 when it cannot be read.
inline double residentMegabytes() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmRSS:")) return std::stod(line.substr(6)) / 1024.0;
    }
    return -1;
}

}  // namespace platform::testing
