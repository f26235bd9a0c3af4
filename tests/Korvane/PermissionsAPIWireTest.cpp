// Permissions on the wire: an optional filter, a bare array back.

#include <gtest/gtest.h>

#include "Korvane/ApiWireTable.hpp"
#include "Korvane/PermissionsAPI.hpp"

namespace korvane {
namespace {

using testing::decoded;
using testing::Finish;
using testing::WireRow;
using Permissions = std::vector<Permission>;

class PermissionsAPIWireTest : public testing::ApiWireTest {};

TEST_F(PermissionsAPIWireTest, EveryOperationOnTheWire) {
    // clang-format off
    const std::vector<WireRow> rows = {
        {.api = "PermissionsAPI", .operation = "callGet",
         .call = [](Finish done) {
             PermissionsAPI::callGet(std::nullopt, decoded<Permissions>(done, [](const Permissions& permissions) {
                 EXPECT_TRUE(permissions.empty());
             }));
         },
         .response = "[]", .method = "GET", .path = "/permissions", .rawQuery = ""},
        {.api = "PermissionsAPI", .operation = "callGet",
         .call = [](Finish done) {
             PermissionsAPI::callGet("public", decoded<Permissions>(done, [](const Permissions& permissions) {
                 ASSERT_EQ(permissions.size(), 1u);
                 const Permission expected{.type = "token:create", .description = "Create tokens",
                                           .applicationTypes = std::vector<std::string>{"public", "private"}};
                 EXPECT_EQ(permissions[0], expected);
             }));
         },
         .response = R"([{"type":"token:create","description":"Create tokens",)"
                     R"("application_types":["public","private"]}])",
         .method = "GET", .path = "/permissions", .query = {{"application_type", "public"}}},
    };
    // clang-format on
    testing::expectEveryOperationHasARow<PermissionsAPI>(rows, "PermissionsAPI");
    walk(rows);
}

}  // namespace
}  // namespace korvane
