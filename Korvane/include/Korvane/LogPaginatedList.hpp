#pragma once
// LogPaginatedList: one page of log entries.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <vector>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/Log.hpp"
#include "Korvane/ModelFields.hpp"
#include "Korvane/Pagination.hpp"

namespace korvane {

struct LogPaginatedList {
    std::optional<Pagination> pagination{};
    std::optional<std::vector<Log>> data{};

    friend bool operator==(const LogPaginatedList&, const LogPaginatedList&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("pagination", &LogPaginatedList::pagination), optional("data", &LogPaginatedList::data));
    }
};

}  // namespace korvane
