#pragma once
// ProxiesAPI: the vault's proxies, configured pass-through endpoints that detokenise on the
// way; one row per operation (see OperationTable.hpp and Operation.hpp for the two call forms).
// Calling a proxy is not here: the element library sends those requests itself.
//
//     auto builder = ProxiesAPI::create.withRequestBuilder(
//         CreateProxyRequest{.name = "pay", .destinationUrl = "https://psp.example/charge"});
//     ProxiesAPI::getById(proxyId, [](std::optional<Proxy> proxy, std::optional<ErrorResponse> error) {});
//
// The listing's "id" gives one item per id, in upper-case form. `delete_` is the operation
// named "delete".
//
// Thread safety: rows are constants; both forms may be called from any thread.

#include <string>
#include <vector>

#include "Korvane/CreateProxyRequest.hpp"
#include "Korvane/OperationTable.hpp"
#include "Korvane/Proxy.hpp"
#include "Korvane/ProxyPaginatedList.hpp"
#include "Korvane/UpdateProxyRequest.hpp"
#include "platform/Uuid.hpp"

namespace korvane {

// clang-format off
#define KORVANE_PROXIES_API(row) \
    row(callGet, operation<ProxyPaginatedList>(HTTPMethod::get, "/proxies", \
        query<Uuids>("id"), query<std::string>("name"), query<int>("page"), query<int>("size"))) \
    row(create, operation<Proxy>(HTTPMethod::post, "/proxies", \
        body<CreateProxyRequest>())) \
    row(delete_, operation<Void>(HTTPMethod::delete_, "/proxies/{id}", \
        path<Uuid>("id"))) \
    row(getById, operation<Proxy>(HTTPMethod::get, "/proxies/{id}", \
        path<Uuid>("id"))) \
    row(update, operation<Proxy>(HTTPMethod::put, "/proxies/{id}", \
        path<Uuid>("id"), body<UpdateProxyRequest>()))
// clang-format on

class ProxiesAPI {
    using Uuid = platform::Uuid;
    using Uuids = std::vector<platform::Uuid>;

public:
    KORVANE_OPERATIONS(KORVANE_PROXIES_API)
};

#undef KORVANE_PROXIES_API

}  // namespace korvane
