#pragma once
// GetLogs: the query of a log listing as a record (no operation takes it; LogsAPI::callGet takes
// the values one by one).
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct GetLogs {
    std::optional<std::string> entityType{};
    std::optional<std::string> entityId{};
    std::optional<Date> startDate{};
    std::optional<Date> endDate{};
    std::optional<int> page{};
    std::optional<int> size{};

    friend bool operator==(const GetLogs&, const GetLogs&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("entity_type", &GetLogs::entityType), optional("entity_id", &GetLogs::entityId),
                      optional("start_date", &GetLogs::startDate), optional("end_date", &GetLogs::endDate),
                      optional("page", &GetLogs::page), optional("size", &GetLogs::size));
    }
};

}  // namespace korvane
