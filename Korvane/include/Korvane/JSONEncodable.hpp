#pragma once
// encodeToJSON: the conversions that operations apply to path and query values before taking
// their text (APIHelper::text).
//
//   string          itself
//   UUID            its upper-case string
//   array           each element converted, in order
//   dictionary      a dictionary with hashable keys, each value converted; its text is the
//                   phone's printing of such a dictionary: [AnyHashable("key"): "value"]
//   date            CodableHelper::dateFormatter() text, read at each call
//   bool, integers, floating values: themselves
//
// Thread safety: as CodableHelper.

#include <map>
#include <string>
#include <type_traits>
#include <vector>

#include "AnyCodable/Value.hpp"
#include "platform/Uuid.hpp"

namespace korvane {

[[nodiscard]] anycodable::Value encodeToJSON(const std::string& value);
[[nodiscard]] anycodable::Value encodeToJSON(const platform::Uuid& value);
[[nodiscard]] anycodable::Value encodeToJSON(anycodable::Date value);

template <class T>
requires(std::is_arithmetic_v<T> && !std::is_same_v<T, char>) [[nodiscard]] anycodable::Value encodeToJSON(T value) {
    return anycodable::Value(value);
}

template <class T>
[[nodiscard]] anycodable::Value encodeToJSON(const std::vector<T>& values) {
    anycodable::Array array;
    array.reserve(values.size());
    for (const auto& value : values) array.push_back(encodeToJSON(value));
    return array;
}

// A dictionary keyed by hashable values, as its entries were converted.
[[nodiscard]] anycodable::Value hashableKeyDictionary(anycodable::Map entries);

template <class T, class C>
[[nodiscard]] anycodable::Value encodeToJSON(const std::map<std::string, T, C>& values) {
    anycodable::Map map;
    for (const auto& [key, value] : values) map.appendUnchecked(key, encodeToJSON(value));
    return hashableKeyDictionary(std::move(map));
}

}  // namespace korvane
