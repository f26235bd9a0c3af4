#pragma once
// TokenReport: token counts of a tenant, overall, per token type and per month.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "Korvane/MonthlyActiveTokenHistory.hpp"
#include "Korvane/TokenMetrics.hpp"

namespace korvane {

struct TokenReport {
    std::optional<std::int64_t> includedMonthlyActiveTokens{};
    std::optional<std::int64_t> monthlyActiveTokens{};
    std::optional<std::map<std::string, TokenMetrics>> metricsByType{};
    std::optional<std::vector<MonthlyActiveTokenHistory>> monthlyActiveTokenHistory{};

    friend bool operator==(const TokenReport&, const TokenReport&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("included_monthly_active_tokens", &TokenReport::includedMonthlyActiveTokens),
                      optional("monthly_active_tokens", &TokenReport::monthlyActiveTokens),
                      optional("metrics_by_type", &TokenReport::metricsByType),
                      optional("monthly_active_token_history", &TokenReport::monthlyActiveTokenHistory));
    }
};

}  // namespace korvane
