#pragma once
// TokenMetrics: how many tokens of one type exist and when the last one was made.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <cstdint>
#include <optional>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct TokenMetrics {
    std::optional<std::int64_t> count{};
    std::optional<Date> lastCreatedAt{};

    friend bool operator==(const TokenMetrics&, const TokenMetrics&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("count", &TokenMetrics::count),
                      optional("last_created_at", &TokenMetrics::lastCreatedAt));
    }
};

}  // namespace korvane
