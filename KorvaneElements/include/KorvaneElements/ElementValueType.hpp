#pragma once
// How an element's value is converted when a request body is built from it.

#include <optional>
#include <string_view>

namespace korvane::elements {

enum class ElementValueType { int_, double_, bool_, string };

// The raw value is the case name: "int", "double", "bool", "string".
[[nodiscard]] std::string_view rawValue(ElementValueType type);
[[nodiscard]] std::optional<ElementValueType> elementValueType(std::string_view rawValue);

}  // namespace korvane::elements
