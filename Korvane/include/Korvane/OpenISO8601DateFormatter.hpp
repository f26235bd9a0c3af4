#pragma once
// OpenISO8601DateFormatter: the vault's date format, with a lenient three-step read.
//
// Settings: ISO 8601 calendar, locale "en_US_POSIX", GMT, pattern
// "yyyy-MM-dd'T'HH:mm:ss.SSSZZZZZ". Writing always uses this formatter's pattern, so dates go
// out with milliseconds and, being in GMT, end in "Z".
//
// `date(from:)` tries, in order, the formatter's own pattern, the same without fractional
// seconds ("yyyy-MM-dd'T'HH:mm:ssZZZZZ"), and the bare date ("yyyy-MM-dd", read as midnight
// GMT); the first that reads the whole text answers. The two fallback formatters are built
// once per process, on first need.
//
// Thread safety: all members may be called from any thread (an internal lock serialises use
// of the underlying formatter, which is not reentrant).

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "AnyCodable/Value.hpp"

namespace korvane {

class OpenISO8601DateFormatter {
public:
    static constexpr std::string_view kDefaultDateFormat = "yyyy-MM-dd'T'HH:mm:ss.SSSZZZZZ";

    OpenISO8601DateFormatter();
    ~OpenISO8601DateFormatter();
    OpenISO8601DateFormatter(const OpenISO8601DateFormatter&) = delete;
    OpenISO8601DateFormatter& operator=(const OpenISO8601DateFormatter&) = delete;

    [[nodiscard]] std::string dateFormat() const;
    // Replaces the pattern of the first step and of writing. A pattern that the formatter
    // can't use is refused: false, and nothing changes.
    [[nodiscard]] bool setDateFormat(std::string_view pattern);

    [[nodiscard]] std::string string(anycodable::Date date) const;
    [[nodiscard]] std::optional<anycodable::Date> date(std::string_view text) const;

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace korvane
