#pragma once
// ReactorsAPI: the vault's reactors (server-side functions run on tokens) and running one;
// one row per operation (see OperationTable.hpp and Operation.hpp for the two call forms).
//
//     auto builder = ReactorsAPI::react.withRequestBuilder(reactorId, ReactRequest{.args = args});
//     ReactorsAPI::getById(reactorId, [](std::optional<Reactor> reactor, std::optional<ErrorResponse> error) {});
//
// The listing's "id" gives one item per id, in upper-case form. `react` expects a body: a run
// that answers 204 fails with emptyDataResponse. `delete_` is the operation named "delete".
//
// Thread safety: rows are constants; both forms may be called from any thread.

#include <string>
#include <vector>

#include "Korvane/CreateReactorRequest.hpp"
#include "Korvane/OperationTable.hpp"
#include "Korvane/ReactRequest.hpp"
#include "Korvane/ReactResponse.hpp"
#include "Korvane/Reactor.hpp"
#include "Korvane/ReactorPaginatedList.hpp"
#include "Korvane/UpdateReactorRequest.hpp"
#include "platform/Uuid.hpp"

namespace korvane {

// clang-format off
#define KORVANE_REACTORS_API(row) \
    row(callGet, operation<ReactorPaginatedList>(HTTPMethod::get, "/reactors", \
        query<Uuids>("id"), query<std::string>("name"), query<int>("page"), query<int>("size"))) \
    row(create, operation<Reactor>(HTTPMethod::post, "/reactors", \
        body<CreateReactorRequest>())) \
    row(delete_, operation<Void>(HTTPMethod::delete_, "/reactors/{id}", \
        path<Uuid>("id"))) \
    row(getById, operation<Reactor>(HTTPMethod::get, "/reactors/{id}", \
        path<Uuid>("id"))) \
    row(react, operation<ReactResponse>(HTTPMethod::post, "/reactors/{id}/react", \
        path<Uuid>("id"), body<ReactRequest>())) \
    row(update, operation<Reactor>(HTTPMethod::put, "/reactors/{id}", \
        path<Uuid>("id"), body<UpdateReactorRequest>()))
// clang-format on

class ReactorsAPI {
    using Uuid = platform::Uuid;
    using Uuids = std::vector<platform::Uuid>;

public:
    KORVANE_OPERATIONS(KORVANE_REACTORS_API)
};

#undef KORVANE_REACTORS_API

}  // namespace korvane
