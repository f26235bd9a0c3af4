// The audit log on the wire: query dates follow the shared date formatter as it stands at
// each call.

#include <gtest/gtest.h>

#include "Korvane/ApiWireTable.hpp"
#include "Korvane/CodableHelper.hpp"
#include "Korvane/LogsAPI.hpp"

namespace korvane {
namespace {

using platform::Uuid;
using testing::decoded;
using testing::Finish;
using testing::WireRow;

const Date kStart = Date(std::chrono::milliseconds(1'705'320'000'123));  // 2024-01-15T12:00:00.123Z
const Date kEnd = kStart + std::chrono::hours(36);

class LogsAPIWireTest : public testing::ApiWireTest {};

TEST_F(LogsAPIWireTest, EveryOperationOnTheWire) {
    // clang-format off
    const std::vector<WireRow> rows = {
        {.api = "LogsAPI", .operation = "callGet",
         .call = [](Finish done) {
             LogsAPI::callGet(std::nullopt, std::nullopt, std::nullopt, std::nullopt, std::nullopt, std::nullopt,
                              decoded<LogPaginatedList>(done));
         },
         .response = "{}", .method = "GET", .path = "/logs", .rawQuery = ""},
        {.api = "LogsAPI", .operation = "callGet",
         .call = [](Finish done) {
             LogsAPI::callGet("token", "t 1/2", kStart, kEnd, 3, 25,
                              decoded<LogPaginatedList>(done, [](const LogPaginatedList& list) {
                                  EXPECT_EQ(list.pagination->pageNumber, 3);
                                  ASSERT_EQ(list.data->size(), 1u);
                                  const Log& log = list.data->at(0);
                                  EXPECT_EQ(log.actorId, Uuid::parse("E621E1F8-C36C-495A-93FC-0C247A3E6E5F"));
                                  EXPECT_EQ(log.operation, "created");
                                  EXPECT_EQ(log.createdAt, kStart);
                              }));
         },
         .response = R"({"pagination":{"page_number":3},"data":[{"tenant_id":"0D2A9A4E-51E4-4B1B-8A3E-3C6F3B0F5A11",
                         "actor_id":"e621e1f8-c36c-495a-93fc-0c247a3e6e5f","actor_type":"application",
                         "entity_type":"token","entity_id":"t1","operation":"created","message":"Token created",
                         "created_at":"2024-01-15T12:00:00.123Z"}]})",
         .method = "GET", .path = "/logs",
         .query = {{"entity_type", "token"}, {"entity_id", "t 1/2"}, {"start_date", "2024-01-15T12:00:00.123Z"},
                   {"end_date", "2024-01-17T00:00:00.123Z"}, {"page", "3"}, {"size", "25"}},
         .rawQuery = "entity_type=token&entity_id=t%201/2&start_date=2024-01-15T12:00:00.123Z"
                     "&end_date=2024-01-17T00:00:00.123Z&page=3&size=25"},
        {.api = "LogsAPI", .operation = "getEntityTypes",
         .call = [](Finish done) {
             using Types = std::vector<LogEntityType>;
             LogsAPI::getEntityTypes(decoded<Types>(done, [](const Types& types) {
                 ASSERT_EQ(types.size(), 2u);
                 EXPECT_EQ(types[0], (LogEntityType{.displayName = "Token", .value = "token"}));
                 EXPECT_EQ(types[1], LogEntityType{});
             }));
         },
         .response = R"([{"display_name":"Token","value":"token"},{}])", .method = "GET", .path = "/logs/entity-types"},
    };
    // clang-format on
    testing::expectEveryOperationHasARow<LogsAPI>(rows, "LogsAPI");
    walk(rows);
}

TEST_F(LogsAPIWireTest, StartDateFollowsTheFormatterSetBetweenCalls) {
    const auto onlyStart = [](std::string expected) {
        // clang-format off
        return WireRow{.api = "LogsAPI", .operation = "callGet",
                       .call = [](Finish done) {
                           LogsAPI::callGet(std::nullopt, std::nullopt, kStart, std::nullopt, std::nullopt,
                                            std::nullopt, decoded<LogPaginatedList>(done));
                       },
                       .response = "{}", .method = "GET", .path = "/logs",
                       .query = {{"start_date", std::move(expected)}}};
        // clang-format on
    };
    walkOne(onlyStart("2024-01-15T12:00:00.123Z"));

    auto dayOnly = std::make_shared<OpenISO8601DateFormatter>();
    ASSERT_TRUE(dayOnly->setDateFormat("yyyy-MM-dd"));
    CodableHelper::setDateFormatter(dayOnly);
    walkOne(onlyStart("2024-01-15"));

    CodableHelper::setDateFormatter(nullptr);
    walkOne(onlyStart("2024-01-15T12:00:00.123Z"));
}

}  // namespace
}  // namespace korvane
