#pragma once
// ValidationProblemDetails: a problem report with the messages for each invalid request field
// under "errors", with open content; see BasicProblemDetails.hpp.

#include "Korvane/BasicProblemDetails.hpp"

namespace korvane {

using ValidationProblemDetails = BasicProblemDetails<true>;

}  // namespace korvane
