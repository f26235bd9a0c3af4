#pragma once
// TransactionsAPI: vault transactions, opened by `create` and ended by `commit` or
// `rollback` with the id it answered (upper-case UUID text in the path). All three are POSTs
// without body or "Content-Type"; `commit` and `rollback` answer Void{} on any 2xx.
// See Operation.hpp for the two call forms.

#include "Korvane/CreateTransactionResponse.hpp"
#include "Korvane/OperationTable.hpp"
#include "platform/Uuid.hpp"

namespace korvane {

// clang-format off
#define KORVANE_TRANSACTIONS_API(row) \
    row(create, operation<CreateTransactionResponse>(HTTPMethod::post, "/transactions")) \
    row(commit, operation<Void>(HTTPMethod::post, "/transactions/{id}/commit", \
        path<platform::Uuid>("id"))) \
    row(rollback, operation<Void>(HTTPMethod::post, "/transactions/{id}/rollback", \
        path<platform::Uuid>("id")))
// clang-format on

class TransactionsAPI {
public:
    KORVANE_OPERATIONS(KORVANE_TRANSACTIONS_API)
};

#undef KORVANE_TRANSACTIONS_API

}  // namespace korvane
