#pragma once
// SessionsAPI: sessions of the vault. The element library opens one with `create` and hands
// the answer to its caller; `authorize` grants an open session, named by its nonce.
//
//     auto builder = SessionsAPI::create.withRequestBuilder();   // POST /sessions, no body
//     builder->addHeader("KV-API-KEY", key);
//
// `authorize` has no result: any 2xx answers Void{}, whatever the body.
// See Operation.hpp for the two call forms of each row.

#include "Korvane/AuthorizeSessionRequest.hpp"
#include "Korvane/CreateSessionResponse.hpp"
#include "Korvane/OperationTable.hpp"

namespace korvane {

// clang-format off
#define KORVANE_SESSIONS_API(row) \
    row(create, operation<CreateSessionResponse>(HTTPMethod::post, "/sessions")) \
    row(authorize, operation<Void>(HTTPMethod::post, "/sessions/authorize", \
        body<AuthorizeSessionRequest>()))
// clang-format on

class SessionsAPI {
public:
    KORVANE_OPERATIONS(KORVANE_SESSIONS_API)
};

#undef KORVANE_SESSIONS_API

}  // namespace korvane
