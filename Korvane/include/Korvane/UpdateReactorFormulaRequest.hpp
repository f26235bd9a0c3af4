#pragma once
// UpdateReactorFormulaRequest: the body that replaces a reactor formula; its fields are in
// ReactorFormulaRequestBody.hpp.

#include "Korvane/ReactorFormulaRequestBody.hpp"

namespace korvane {

using UpdateReactorFormulaRequest = ReactorFormulaRequestBody<BodyFor::update>;

}  // namespace korvane
