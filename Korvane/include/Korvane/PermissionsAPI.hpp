#pragma once
// PermissionsAPI: the permissions that applications can be granted, optionally only those
// for one application type. Answers a bare JSON array. See Operation.hpp for the two call
// forms.

#include <string>
#include <vector>

#include "Korvane/OperationTable.hpp"
#include "Korvane/Permission.hpp"

namespace korvane {

// clang-format off
#define KORVANE_PERMISSIONS_API(row) \
    row(callGet, operation<std::vector<Permission>>(HTTPMethod::get, "/permissions", \
        query<std::string>("application_type")))
// clang-format on

class PermissionsAPI {
public:
    KORVANE_OPERATIONS(KORVANE_PERMISSIONS_API)
};

#undef KORVANE_PERMISSIONS_API

}  // namespace korvane
