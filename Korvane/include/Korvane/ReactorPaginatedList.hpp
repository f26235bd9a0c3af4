#pragma once
// ReactorPaginatedList: one page of reactors.

#include "Korvane/PaginatedList.hpp"
#include "Korvane/Reactor.hpp"

namespace korvane {

using ReactorPaginatedList = PaginatedList<Reactor>;

}  // namespace korvane
