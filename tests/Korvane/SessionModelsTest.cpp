// Session, log, permission and transaction models: decode then encode gives the same JSON, in
// field order.

#include <gtest/gtest.h>

#include "Korvane/AuthorizeSessionRequest.hpp"
#include "Korvane/CreateSessionResponse.hpp"
#include "Korvane/CreateTransactionResponse.hpp"
#include "Korvane/GetLogs.hpp"
#include "Korvane/GetPermissions.hpp"
#include "Korvane/LogEntityType.hpp"
#include "Korvane/LogPaginatedList.hpp"
#include "Korvane/ModelRoundTrip.hpp"
#include "Korvane/Permission.hpp"

namespace korvane {
namespace {

using testing::modelCase;

#define LOG                                                                                                     \
    R"({"tenant_id":"0D2A9A4E-51E4-4B1B-8A3E-3C6F3B0F5A11","actor_id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F",)" \
    R"("actor_type":"application","entity_type":"token","entity_id":"t1","operation":"created",)"               \
    R"("message":"Token created","created_at":"2024-01-15T12:00:00.123Z"})"

TEST(SessionModels, RoundTripWithAllAndWithOnlyRequiredFields) {
    const testing::ModelCase cases[] = {
        modelCase<CreateSessionResponse>("CreateSessionResponse",
                                         R"({"session_key":"sk","nonce":"n","expires_at":"2024-01-15T12:00:00.123Z"})"),
        modelCase<AuthorizeSessionRequest>(
            "AuthorizeSessionRequest",
            R"({"nonce":"n","expires_at":"in an hour","permissions":["token:read"],)"
            R"("rules":[{"priority":0,"conditions":[{"attribute":"a","operator":"eq","value":"v"}]}]})",
            R"({"nonce":"n"})", {"nonce"}),
        modelCase<Log>("Log", LOG),
        modelCase<LogEntityType>("LogEntityType", R"({"display_name":"Token","value":"token"})"),
        modelCase<LogPaginatedList>(
            "LogPaginatedList",
            R"({"pagination":{"total_items":2,"page_number":1,"page_size":1,"total_pages":2},"data":[)" LOG "]}"),
        modelCase<Permission>(
            "Permission",
            R"({"type":"token:create","description":"Create tokens","application_types":["public","private"]})"),
        modelCase<CreateTransactionResponse>(
            "CreateTransactionResponse",
            R"({"id":"9B2C7C1E-0F3A-4D5E-8B6A-2F1E3D4C5B6A","created_by":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F",)"
            R"("created_at":"2024-01-15T12:00:00.123Z","expires_at":"2024-01-15T12:05:00.123Z"})"),
        modelCase<GetLogs>("GetLogs",
                           R"({"entity_type":"token","entity_id":"t1","start_date":"2024-01-15T00:00:00.000Z",)"
                           R"("end_date":"2024-01-16T00:00:00.000Z","page":0,"size":20})"),
        modelCase<GetPermissions>("GetPermissions", R"({"application_type":"public"})"),
    };
    for (const auto& c : cases) testing::expectRoundTrips(c);
}

#undef LOG

}  // namespace
}  // namespace korvane
