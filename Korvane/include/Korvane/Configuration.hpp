#pragma once
// Configuration: process-wide constants of the vault client.
//
// Thread safety: reads and writes may come from any thread; writes are meant for start-up.

#include <string>

namespace korvane {

// A half-open range of HTTP statuses [lowerBound, upperBound).
struct StatusCodeRange {
    int lowerBound = 200;
    int upperBound = 300;

    [[nodiscard]] constexpr bool contains(int status) const { return status >= lowerBound && status < upperBound; }
    friend bool operator==(const StatusCodeRange&, const StatusCodeRange&) = default;
};

class Configuration {
public:
    // Kept for callers; nothing in the runtime reads it. Default "yyyy-MM-dd'T'HH:mm:ss.SSSZZZZZ".
    [[nodiscard]] static std::string dateFormat();
    static void setDateFormat(std::string format);

    // The statuses that count as success; default 200 up to but not including 300.
    [[nodiscard]] static StatusCodeRange successfulStatusCodeRange();
    static void setSuccessfulStatusCodeRange(StatusCodeRange range);
};

}  // namespace korvane
