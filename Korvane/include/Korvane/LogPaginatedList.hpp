#pragma once
// LogPaginatedList: one page of log entries.

#include "Korvane/Log.hpp"
#include "Korvane/PaginatedList.hpp"

namespace korvane {

using LogPaginatedList = PaginatedList<Log>;

}  // namespace korvane
