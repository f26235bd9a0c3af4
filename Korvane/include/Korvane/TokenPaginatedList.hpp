#pragma once
// TokenPaginatedList: one page of tokens.

#include "Korvane/PaginatedList.hpp"
#include "Korvane/Token.hpp"

namespace korvane {

using TokenPaginatedList = PaginatedList<Token>;

}  // namespace korvane
