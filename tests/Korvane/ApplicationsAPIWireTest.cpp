// Applications on the wire.

#include <gtest/gtest.h>

#include "Korvane/ApiWireTable.hpp"
#include "Korvane/ApplicationsAPI.hpp"

namespace korvane {
namespace {

using platform::Uuid;
using testing::decoded;
using testing::Finish;
using testing::WireRow;
using Strings = std::vector<std::string>;

const Uuid kApp = *Uuid::parse("e621e1f8-c36c-495a-93fc-0c247a3e6e5f");
const Uuid kOther = *Uuid::parse("0d2a9a4e-51e4-4b1b-8a3e-3c6f3b0f5a11");
constexpr const char* kAppPath = "/applications/E621E1F8-C36C-495A-93FC-0C247A3E6E5F";

constexpr const char* kApplicationJson = R"({
    "id": "E621E1F8-C36C-495A-93FC-0C247A3E6E5F", "tenant_id": "0D2A9A4E-51E4-4B1B-8A3E-3C6F3B0F5A11",
    "name": "checkout", "key": "key_1", "type": "public",
    "created_at": "2024-01-15T12:00:00.123Z", "expires_at": "2025-01-01",
    "permissions": ["token:create"],
    "rules": [{"priority": 2, "conditions": [{"attribute": "id", "operator": "eq", "value": "x"}]}]})";

void expectCheckout(const Application& app) {
    EXPECT_EQ(app.id, kApp);
    EXPECT_EQ(app.tenantId, kOther);
    EXPECT_EQ(app.key, "key_1");
    EXPECT_EQ(app.createdAt, Date(std::chrono::milliseconds(1'705'320'000'123)));
    EXPECT_TRUE(app.expiresAt) << "a bare date reads as midnight";
    ASSERT_TRUE(app.rules && app.rules->size() == 1);
    EXPECT_EQ(app.rules->at(0).priority, 2);
    EXPECT_EQ(app.rules->at(0).conditions->at(0)._operator, "eq");
}

class ApplicationsAPIWireTest : public testing::ApiWireTest {};

TEST_F(ApplicationsAPIWireTest, EveryApplicationOperationOnTheWire) {
    const std::string page =
        std::string(R"({"pagination":{"total_items":1,"page_number":0,"page_size":10,"total_pages":1},)") +
        R"("data":[)" + kApplicationJson + "]}";
    const CreateApplicationRequest fullCreate{
        .name = "checkout",
        .type = "public",
        .expiresAt = "in 30 days",
        .permissions = Strings{"token:create", "token:read"},
        .rules = std::vector<AccessRule>{AccessRule{.description = "all", .container = "/"}}};
    const UpdateApplicationRequest fullUpdate{
        .name = "renamed", .permissions = Strings{}, .rules = std::vector<AccessRule>{AccessRule{.priority = 0}}};
    const auto checkout = [](Finish done) { return decoded<Application>(std::move(done), expectCheckout); };

    // clang-format off
    const std::vector<WireRow> rows = {
        {.api = "ApplicationsAPI", .operation = "callGet",
         .call = [](Finish done) {
             ApplicationsAPI::callGet(std::nullopt, std::nullopt, std::nullopt, std::nullopt,
                                      decoded<ApplicationPaginatedList>(done, [](const ApplicationPaginatedList& list) {
                                          EXPECT_FALSE(list.pagination);
                                      }));
         },
         .response = "{}", .method = "GET", .path = "/applications", .rawQuery = ""},
        {.api = "ApplicationsAPI", .operation = "callGet",
         .call = [](Finish done) {
             ApplicationsAPI::callGet(std::vector<Uuid>{kApp, kOther}, Strings{"public", "a b+c&d=e"}, 0, 10,
                                      decoded<ApplicationPaginatedList>(done, [](const ApplicationPaginatedList& list) {
                                          EXPECT_EQ(list.pagination->totalItems, 1);
                                          ASSERT_EQ(list.data->size(), 1u);
                                          expectCheckout(list.data->at(0));
                                      }));
         },
         .response = page, .method = "GET", .path = "/applications",
         .query = {{"id", "E621E1F8-C36C-495A-93FC-0C247A3E6E5F"}, {"id", "0D2A9A4E-51E4-4B1B-8A3E-3C6F3B0F5A11"},
                   {"type", "public"}, {"type", "a b+c&d=e"}, {"page", "0"}, {"size", "10"}},
         // What would split the value is escaped; "+" stays, as the phone's URL components leave it.
         .rawQuery = "id=E621E1F8-C36C-495A-93FC-0C247A3E6E5F&id=0D2A9A4E-51E4-4B1B-8A3E-3C6F3B0F5A11"
                     "&type=public&type=a%20b+c%26d%3De&page=0&size=10"},
        {.api = "ApplicationsAPI", .operation = "create",
         .call = [=](Finish done) { ApplicationsAPI::create(fullCreate, checkout(done)); },
         .status = 201, .response = kApplicationJson, .method = "POST", .path = "/applications",
         .body = R"({"name":"checkout","type":"public","expires_at":"in 30 days",
                     "permissions":["token:create","token:read"],"rules":[{"description":"all","container":"/"}]})"},
        {.api = "ApplicationsAPI", .operation = "delete_",
         .call = [](Finish done) { ApplicationsAPI::delete_(kApp, decoded<Void>(done)); },
         .status = 204, .method = "DELETE", .path = kAppPath},
        {.api = "ApplicationsAPI", .operation = "getById",
         .call = [=](Finish done) { ApplicationsAPI::getById(kApp, checkout(done)); },
         .response = kApplicationJson, .method = "GET", .path = kAppPath},
        {.api = "ApplicationsAPI", .operation = "getByKey",
         .call = [=](Finish done) { ApplicationsAPI::getByKey(checkout(done)); },
         .response = kApplicationJson, .method = "GET", .path = "/applications/key"},
        {.api = "ApplicationsAPI", .operation = "regenerateKey",
         .call = [=](Finish done) { ApplicationsAPI::regenerateKey(kApp, checkout(done)); },
         .response = kApplicationJson, .method = "POST",
         .path = "/applications/E621E1F8-C36C-495A-93FC-0C247A3E6E5F/regenerate"},
        {.api = "ApplicationsAPI", .operation = "update",
         .call = [=](Finish done) { ApplicationsAPI::update(kApp, fullUpdate, checkout(done)); },
         .response = kApplicationJson, .method = "PUT", .path = kAppPath,
         .body = R"({"name":"renamed","permissions":[],"rules":[{"priority":0}]})"},
    };
    // clang-format on
    testing::expectEveryOperationHasARow<ApplicationsAPI>(rows, "ApplicationsAPI");
    walk(rows);
}

}  // namespace
}  // namespace korvane
