#pragma once
// LogsAPI: the vault's audit log.
//
// The dates of `callGet` go as single query items in the text of
// CodableHelper::dateFormatter(), read when the builder is made, so a formatter set at any
// time applies to the next call. `getEntityTypes` answers a bare JSON array.
// See Operation.hpp for the two call forms.

#include <string>
#include <vector>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/LogEntityType.hpp"
#include "Korvane/LogPaginatedList.hpp"
#include "Korvane/OperationTable.hpp"

namespace korvane {

// clang-format off
#define KORVANE_LOGS_API(row) \
    row(callGet, operation<LogPaginatedList>(HTTPMethod::get, "/logs", \
        query<std::string>("entity_type"), query<std::string>("entity_id"), \
        query<Date>("start_date"), query<Date>("end_date"), query<int>("page"), query<int>("size"))) \
    row(getEntityTypes, operation<std::vector<LogEntityType>>(HTTPMethod::get, "/logs/entity-types"))
// clang-format on

class LogsAPI {
public:
    KORVANE_OPERATIONS(KORVANE_LOGS_API)
};

#undef KORVANE_LOGS_API

}  // namespace korvane
