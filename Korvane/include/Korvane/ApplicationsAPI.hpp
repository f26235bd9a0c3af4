#pragma once
// ApplicationsAPI: applications of the vault (API keys with their permissions and rules).
//
//     ApplicationsAPI::getById(id, [](std::optional<Application> app, std::optional<ErrorResponse> error) {});
//
// Ids go into paths and queries as upper-case UUID text; both arrays of `callGet` are
// exploded (one item per element). `getByKey` answers the application whose key
// authenticates the call. `regenerateKey` is a POST without body or "Content-Type".
// `delete_` is the operation named "delete". See Operation.hpp for the two call forms.

#include <string>
#include <vector>

#include "Korvane/Application.hpp"
#include "Korvane/ApplicationPaginatedList.hpp"
#include "Korvane/CreateApplicationRequest.hpp"
#include "Korvane/OperationTable.hpp"
#include "Korvane/UpdateApplicationRequest.hpp"
#include "platform/Uuid.hpp"

namespace korvane {

// clang-format off
#define KORVANE_APPLICATIONS_API(row) \
    row(callGet, operation<ApplicationPaginatedList>(HTTPMethod::get, "/applications", \
        query<std::vector<platform::Uuid>>("id"), query<std::vector<std::string>>("type"), \
        query<int>("page"), query<int>("size"))) \
    row(create, operation<Application>(HTTPMethod::post, "/applications", \
        body<CreateApplicationRequest>())) \
    row(delete_, operation<Void>(HTTPMethod::delete_, "/applications/{id}", \
        path<platform::Uuid>("id"))) \
    row(getById, operation<Application>(HTTPMethod::get, "/applications/{id}", \
        path<platform::Uuid>("id"))) \
    row(getByKey, operation<Application>(HTTPMethod::get, "/applications/key")) \
    row(regenerateKey, operation<Application>(HTTPMethod::post, "/applications/{id}/regenerate", \
        path<platform::Uuid>("id"))) \
    row(update, operation<Application>(HTTPMethod::put, "/applications/{id}", \
        path<platform::Uuid>("id"), body<UpdateApplicationRequest>()))
// clang-format on

class ApplicationsAPI {
public:
    KORVANE_OPERATIONS(KORVANE_APPLICATIONS_API)
};

#undef KORVANE_APPLICATIONS_API

}  // namespace korvane
