#pragma once
// CreateReactorFormulaRequest: the body that creates a reactor formula; its fields are in
// ReactorFormulaRequestBody.hpp.

#include "Korvane/ReactorFormulaRequestBody.hpp"

namespace korvane {

using CreateReactorFormulaRequest = ReactorFormulaRequestBody<BodyFor::create>;

}  // namespace korvane
