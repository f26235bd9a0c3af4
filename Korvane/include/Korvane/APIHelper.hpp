#pragma once
// APIHelper: how operations prepare query items, path items and header maps.
//
// "Text" of a value everywhere here is the phone's default textual form (string
// interpolation): a string is itself, an integer its digits, a UUID its upper-case form, a
// bool "true"/"false", a double "1.5" (see anycodable::description). "Absent" is the empty
// value (anycodable::Empty); JSON null (anycodable::Null) is a present value.
//
// Stateless; every function may be called from any thread.

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "AnyCodable/Value.hpp"
#include "Korvane/ParameterEncoding.hpp"
#include "platform/Url.hpp"

namespace korvane {

// One query parameter of an operation: its value (absent contributes nothing) and whether a
// collection value becomes one item per element.
struct QueryParameter {
    anycodable::Value wrappedValue;
    bool isExplode = true;
};

// Query parameters in the order the operation declares them.
using QueryParameters = std::vector<std::pair<std::string, QueryParameter>>;

struct APIHelper {
    [[nodiscard]] static std::string text(const anycodable::Value& value);

    // Drops absent entries; a result without entries is absent.
    [[nodiscard]] static std::optional<Parameters> rejectNil(const Parameters& source);

    // Absent entries are dropped; an array becomes the text of its present elements joined by
    // ","; any other value its text.
    [[nodiscard]] static std::map<std::string, std::string> rejectNilHeaders(const Parameters& source);

    // Bools become "true" or "false"; everything else is copied.
    [[nodiscard]] static std::optional<Parameters> convertBoolToString(const std::optional<Parameters>& source);

    // An array becomes the text of its present elements joined by ","; anything else is
    // returned as it is.
    [[nodiscard]] static anycodable::Value mapValueToPathItem(const anycodable::Value& source);

    // Query items in parameter order. An array's present elements give one item each with
    // `isExplode` (an empty array gives none), or one item of their texts joined by "," without;
    // other values give one item of their text. No items at all is absent, so that no bare
    // "?" goes on the URL.
    [[nodiscard]] static std::optional<std::vector<platform::UrlQueryItem>> mapValuesToQueryItems(
        const QueryParameters& source);

    // The same over a parameter map with every collection exploded.
    [[nodiscard]] static std::optional<std::vector<platform::UrlQueryItem>> mapValuesToQueryItems(
        const Parameters& source);
};

}  // namespace korvane
