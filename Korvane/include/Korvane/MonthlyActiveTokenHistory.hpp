#pragma once
// MonthlyActiveTokenHistory: the active token count of one month.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <cstdint>
#include <optional>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct MonthlyActiveTokenHistory {
    std::optional<int> year{};
    std::optional<int> month{};
    std::optional<std::int64_t> count{};

    friend bool operator==(const MonthlyActiveTokenHistory&, const MonthlyActiveTokenHistory&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("year", &MonthlyActiveTokenHistory::year),
                      optional("month", &MonthlyActiveTokenHistory::month),
                      optional("count", &MonthlyActiveTokenHistory::count));
    }
};

}  // namespace korvane
