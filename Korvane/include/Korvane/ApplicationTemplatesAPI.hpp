#pragma once
// ApplicationTemplatesAPI: the templates that new applications start from. `callGet` answers
// a bare JSON array, not a paginated list. See Operation.hpp for the two call forms.

#include <vector>

#include "Korvane/ApplicationTemplate.hpp"
#include "Korvane/OperationTable.hpp"
#include "platform/Uuid.hpp"

namespace korvane {

// clang-format off
#define KORVANE_APPLICATION_TEMPLATES_API(row) \
    row(callGet, operation<std::vector<ApplicationTemplate>>(HTTPMethod::get, "/application-templates")) \
    row(getById, operation<ApplicationTemplate>(HTTPMethod::get, "/application-templates/{id}", \
        path<platform::Uuid>("id")))
// clang-format on

class ApplicationTemplatesAPI {
public:
    KORVANE_OPERATIONS(KORVANE_APPLICATION_TEMPLATES_API)
};

#undef KORVANE_APPLICATION_TEMPLATES_API

}  // namespace korvane
