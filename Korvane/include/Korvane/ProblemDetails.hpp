#pragma once
// ProblemDetails: a problem report of the vault, with open content; see BasicProblemDetails.hpp.

#include "Korvane/BasicProblemDetails.hpp"

namespace korvane {

using ProblemDetails = BasicProblemDetails<false>;

}  // namespace korvane
