#pragma once
// ApplicationPaginatedList: one page of applications.

#include "Korvane/Application.hpp"
#include "Korvane/PaginatedList.hpp"

namespace korvane {

using ApplicationPaginatedList = PaginatedList<Application>;

}  // namespace korvane
