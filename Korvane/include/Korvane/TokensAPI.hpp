#pragma once
// TokensAPI: the vault's token resources, one row per operation (see Operation.hpp for the
// two call forms each row gives).
//
//     auto builder = TokensAPI::create.withRequestBuilder(CreateTokenRequest{.type = "card"});
//     TokensAPI::getById("t1", [](std::optional<Token> token, std::optional<ErrorResponse> error) {});
//
// The "metadata" query parameter is the one that is not exploded: the whole map becomes one
// item whose value is the map's printed form, [AnyHashable("key"): "value"].
// `delete_` is the operation named "delete" (a keyword here).

#include <map>
#include <string>
#include <vector>

#include "Korvane/CreateTokenRequest.hpp"
#include "Korvane/CreateTokenResponse.hpp"
#include "Korvane/OperationTable.hpp"
#include "Korvane/SearchTokensRequest.hpp"
#include "Korvane/Token.hpp"
#include "Korvane/TokenPaginatedList.hpp"
#include "Korvane/UpdateTokenRequest.hpp"

namespace korvane {

// clang-format off
#define KORVANE_TOKENS_API(row) \
    row(callGet, operation<TokenPaginatedList>(HTTPMethod::get, "/tokens", \
        query<Strings>("type"), query<Strings>("id"), query<Metadata>("metadata", notExploded), \
        query<int>("page"), query<int>("size"))) \
    row(create, operation<CreateTokenResponse>(HTTPMethod::post, "/tokens", \
        body<CreateTokenRequest>())) \
    row(createAssociation, association(HTTPMethod::post)) \
    row(createChild, operation<CreateTokenResponse>(HTTPMethod::post, "/tokens/{parentId}/children", \
        path("parentId"), body<CreateTokenRequest>())) \
    row(delete_, operation<Void>(HTTPMethod::delete_, "/tokens/{id}", \
        path("id"))) \
    row(deleteAssociation, association(HTTPMethod::delete_)) \
    row(getById, operation<Token>(HTTPMethod::get, "/tokens/{id}", \
        path("id"))) \
    row(getChildren, operation<TokenPaginatedList>(HTTPMethod::get, "/tokens/{parentId}/children", \
        path("parentId"), query<Strings>("type"), query<Strings>("id"), query<Metadata>("metadata", notExploded), \
        query<int>("page"), query<int>("size"))) \
    row(search, operation<TokenPaginatedList>(HTTPMethod::post, "/tokens/search", \
        body<SearchTokensRequest>())) \
    row(update, operation<Token>(HTTPMethod::patch, "/tokens/{id}", \
        path("id"), body<UpdateTokenRequest>()))
// clang-format on

class TokensAPI {
    using Strings = std::vector<std::string>;
    using Metadata = std::map<std::string, std::string>;
    static constexpr auto association = [](HTTPMethod method) {
        return operation<Void>(method, "/tokens/{parentId}/children/{childId}", path("parentId"), path("childId"));
    };

public:
    KORVANE_OPERATIONS(KORVANE_TOKENS_API)
};

#undef KORVANE_TOKENS_API

}  // namespace korvane
