#pragma once
// The auto reload state as the backend reports it, and the change the auto reload sheet asks
// for. Amounts in cents.

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

#include "ToviUI/ToviSharedRecords.hpp"

namespace tovi {

// Auto reload as the backend reports it; optional fields stay absent when the record's are.
struct AutoReloadEnabled {
    std::optional<std::string> paymentMethodId;
    std::optional<std::int64_t> reloadAmount;     // cents
    std::optional<std::int64_t> reloadThreshold;  // cents

    friend bool operator==(const AutoReloadEnabled&, const AutoReloadEnabled&) = default;
};

struct AutoReloadDisabled {
    std::optional<std::int64_t> reloadThreshold;  // cents

    friend bool operator==(const AutoReloadDisabled&, const AutoReloadDisabled&) = default;
};

using AutoReloadUiModel = std::variant<AutoReloadEnabled, AutoReloadDisabled>;

// Absent or disabled record: `disabled` with the merchant's minimum threshold.
[[nodiscard]] AutoReloadUiModel makeAutoReloadUiModel(const std::optional<ToviSharedAutoReloadConfiguration>& record,
                                                      std::int32_t minimumAutoReloadThreshold);

// The change the auto reload sheet asks for; every field is required here.
struct AutoReloadUpdateEnabled {
    std::string paymentMethodId;
    std::int64_t reloadAmount = 0;     // cents
    std::int64_t reloadThreshold = 0;  // cents

    friend bool operator==(const AutoReloadUpdateEnabled&, const AutoReloadUpdateEnabled&) = default;
};

struct AutoReloadUpdateDisabled {
    friend bool operator==(const AutoReloadUpdateDisabled&, const AutoReloadUpdateDisabled&) = default;
};

using AutoReloadUpdateInfo = std::variant<AutoReloadUpdateEnabled, AutoReloadUpdateDisabled>;

}  // namespace tovi
