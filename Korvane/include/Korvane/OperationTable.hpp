#pragma once
// OperationTable: an API class's operations declared once, as one list of rows, so that
// everything that must know every operation (the members, their names, the wire tests that
// walk them) is derived from the same list and none can be forgotten.
//
// An API class writes its rows as an X-macro list and expands it once:
//
//     #define KORVANE_SESSIONS_API(row) <backslash>
//         row(create, operation<CreateSessionResponse>(HTTPMethod::post, "/sessions")) <backslash>
//         row(authorize, operation<Void>(HTTPMethod::post, "/sessions/authorize", <backslash>
//             body<AuthorizeSessionRequest>()))
//     class SessionsAPI {
//     public:
//         KORVANE_OPERATIONS(KORVANE_SESSIONS_API)
//     };
//     #undef KORVANE_SESSIONS_API
//
// KORVANE_OPERATIONS gives, for every row, `static constexpr auto name = <row>;` (an Operation,
// with both call forms: `SessionsAPI::create.withRequestBuilder()` and
// `SessionsAPI::create(completion)`), and once:
//
//     static constexpr std::array<std::string_view, N> operationNames;   // member names, row order
//
// Each line of the list but the last ends in a backslash. A row's name is the member's name
// as written ("delete_" for the operation called "delete"). The row expression may hold
// commas of its own (it is taken as the rest of the arguments).
//
// Thread safety: rows and names are constants.

#include <array>
#include <string_view>

#include "Korvane/Operation.hpp"

#define KORVANE_OPERATION_MEMBER_(name, ...) static constexpr auto name = __VA_ARGS__;
#define KORVANE_OPERATION_NAME_(name, ...) std::string_view(#name),

#define KORVANE_OPERATIONS(list)                                           \
    list(KORVANE_OPERATION_MEMBER_) static constexpr auto operationNames = \
        std::to_array<std::string_view>({list(KORVANE_OPERATION_NAME_)});
