// Transactions on the wire: three bodiless POSTs, two of them without a result.

#include <gtest/gtest.h>

#include "Korvane/ApiWireTable.hpp"
#include "Korvane/TransactionsAPI.hpp"

namespace korvane {
namespace {

using platform::Uuid;
using testing::decoded;
using testing::Finish;
using testing::WireRow;

const Uuid kTransaction = *Uuid::parse("9b2c7c1e-0f3a-4d5e-8b6a-2f1e3d4c5b6a");

class TransactionsAPIWireTest : public testing::ApiWireTest {};

TEST_F(TransactionsAPIWireTest, EveryOperationOnTheWire) {
    // clang-format off
    const std::vector<WireRow> rows = {
        {.api = "TransactionsAPI", .operation = "create",
         .call = [](Finish done) {
             TransactionsAPI::create(decoded<CreateTransactionResponse>(done, [](const CreateTransactionResponse& t) {
                 EXPECT_EQ(t.id, kTransaction);
                 EXPECT_FALSE(t.createdBy);
                 EXPECT_EQ(t.expiresAt, Date(std::chrono::milliseconds(1'705'320'000'000)));
             }));
         },
         .status = 201,
         .response = R"({"id":"9b2c7c1e-0f3a-4d5e-8b6a-2f1e3d4c5b6a","expires_at":"2024-01-15T12:00:00Z"})",
         .method = "POST", .path = "/transactions"},
        {.api = "TransactionsAPI", .operation = "commit",
         .call = [](Finish done) { TransactionsAPI::commit(kTransaction, decoded<Void>(done)); },
         .status = 204, .method = "POST", .path = "/transactions/9B2C7C1E-0F3A-4D5E-8B6A-2F1E3D4C5B6A/commit"},
        {.api = "TransactionsAPI", .operation = "rollback",
         .call = [](Finish done) { TransactionsAPI::rollback(kTransaction, decoded<Void>(done)); },
         .status = 200, .response = "<html>ignored</html>",
         .method = "POST", .path = "/transactions/9B2C7C1E-0F3A-4D5E-8B6A-2F1E3D4C5B6A/rollback"},
    };
    // clang-format on
    testing::expectEveryOperationHasARow<TransactionsAPI>(rows, "TransactionsAPI");
    walk(rows);
}

}  // namespace
}  // namespace korvane
