#pragma once
// TenantUsageReport: what the tenant has used; both report operations answer it.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "Korvane/TokenReport.hpp"

namespace korvane {

struct TenantUsageReport {
    std::optional<TokenReport> tokenReport{};

    friend bool operator==(const TenantUsageReport&, const TenantUsageReport&) = default;

    static constexpr auto jsonFields() { return fields(optional("token_report", &TenantUsageReport::tokenReport)); }
};

}  // namespace korvane
