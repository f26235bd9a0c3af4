#pragma once
// String-backed enums for generated models.
//
// An enum takes part by declaring, next to it (found by argument-dependent lookup), its
// cases in order with their raw JSON strings:
//
//   enum class Status { active, retired, unknown };
//   constexpr auto jsonCases(Status) {
//       return std::array{std::pair{Status::active, std::string_view("active")}, ...};
//   }
//
// and, for the "defaults last" behaviour, `constexpr bool caseIterableDefaultsLast(Status)
// { return true; }`: a raw value the client doesn't know then decodes as the last case
// instead of failing. No enum of this client uses it; it is here for generated enums.

#include <optional>
#include <string_view>
#include <type_traits>

namespace korvane {

template <class T>
concept StringEnum = std::is_enum_v<T> && requires(T t) {
    jsonCases(t);
};

template <StringEnum T>
[[nodiscard]] constexpr std::string_view rawValue(T value) {
    for (const auto& [item, raw] : jsonCases(T{})) {
        if (item == value) return raw;
    }
    return {};
}

template <StringEnum T>
[[nodiscard]] constexpr std::optional<T> fromRawValue(std::string_view raw) {
    const auto cases = jsonCases(T{});
    for (const auto& [item, text] : cases) {
        if (text == raw) return item;
    }
    if constexpr (requires { caseIterableDefaultsLast(T{}); }) {
        if (caseIterableDefaultsLast(T{}) && !cases.empty()) return cases.back().first;
    }
    return std::nullopt;
}

}  // namespace korvane
