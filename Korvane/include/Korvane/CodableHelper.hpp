#pragma once
// CodableHelper: the shared date formatter and JSON coders of the vault client.
//
// Each has an override slot and a default built lazily, once. A getter answers the override
// when set, else the default. The default coders capture the date formatter as it stands when
// they are first built, deliberately: setting a formatter after that has no effect on them
// (only on callers that read `dateFormatter()` each time, such as query dates). The default
// encoder pretty-prints, so bodies on the wire hold line breaks and indentation.
//
// Thread safety: every member may be called from any thread. Overrides are meant to be set
// at start-up; a coder already handed out keeps working after a change.

#include <expected>
#include <memory>
#include <string>
#include <string_view>

#include "Korvane/JSONDecoder.hpp"
#include "Korvane/JSONEncoder.hpp"
#include "Korvane/OpenISO8601DateFormatter.hpp"

namespace korvane {

class CodableHelper {
public:
    [[nodiscard]] static std::shared_ptr<const OpenISO8601DateFormatter> dateFormatter();
    // nullptr clears the override.
    static void setDateFormatter(std::shared_ptr<const OpenISO8601DateFormatter> formatter);

    [[nodiscard]] static std::shared_ptr<const JSONDecoder> jsonDecoder();
    static void setJsonDecoder(std::shared_ptr<const JSONDecoder> decoder);

    [[nodiscard]] static std::shared_ptr<const JSONEncoder> jsonEncoder();
    static void setJsonEncoder(std::shared_ptr<const JSONEncoder> encoder);

    template <JSONCodable T>
    [[nodiscard]] static std::expected<T, DecodingError> decode(std::string_view data) {
        return jsonDecoder()->decode<T>(data);
    }

    template <JSONCodable T>
    [[nodiscard]] static std::expected<std::string, EncodingError> encode(const T& value) {
        return jsonEncoder()->encode(value);
    }

    // Clears the overrides and forgets the built defaults, so that a test starts as a fresh
    // process would.
    static void resetForTesting();

    // Strategies that write and read dates with `formatter`, holding it.
    [[nodiscard]] static std::function<std::string(Date)> formatted(
        std::shared_ptr<const OpenISO8601DateFormatter> formatter);
    [[nodiscard]] static std::function<std::optional<Date>(std::string_view)> parsed(
        std::shared_ptr<const OpenISO8601DateFormatter> formatter);
};

}  // namespace korvane
