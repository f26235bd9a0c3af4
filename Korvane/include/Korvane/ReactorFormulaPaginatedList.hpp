#pragma once
// ReactorFormulaPaginatedList: one page of reactor formulas.

#include "Korvane/PaginatedList.hpp"
#include "Korvane/ReactorFormula.hpp"

namespace korvane {

using ReactorFormulaPaginatedList = PaginatedList<ReactorFormula>;

}  // namespace korvane
