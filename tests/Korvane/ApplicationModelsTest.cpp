// Application and template models: decode then encode gives the same JSON, in field order.

#include <gtest/gtest.h>

#include "Korvane/ApplicationPaginatedList.hpp"
#include "Korvane/ApplicationTemplate.hpp"
#include "Korvane/CreateApplicationRequest.hpp"
#include "Korvane/GetApplications.hpp"
#include "Korvane/ModelRoundTrip.hpp"
#include "Korvane/UpdateApplicationRequest.hpp"

namespace korvane {
namespace {

using testing::modelCase;

#define CONDITION R"({"attribute":"id","operator":"starts_with","value":"t_"})"
#define RULE                                                                                               \
    R"({"description":"pci","priority":1,"container":"/pci/","transform":"mask","conditions":[)" CONDITION \
    R"(],"permissions":["token:use"]})"
#define APPLICATION                                                                                           \
    R"({"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","tenant_id":"0D2A9A4E-51E4-4B1B-8A3E-3C6F3B0F5A11",)"     \
    R"("name":"checkout","key":"key_1","type":"public","created_by":"9B2C7C1E-0F3A-4D5E-8B6A-2F1E3D4C5B6A",)" \
    R"("created_at":"2024-01-15T12:00:00.123Z","modified_by":"9B2C7C1E-0F3A-4D5E-8B6A-2F1E3D4C5B6A",)"        \
    R"("modified_at":"2024-01-16T08:30:00.000Z","expires_at":"2025-01-01T00:00:00.000Z",)"                    \
    R"("permissions":["token:create","token:read"],"rules":[)" RULE "]}"

TEST(ApplicationModels, RoundTripWithAllAndWithOnlyRequiredFields) {
    const testing::ModelCase cases[] = {
        modelCase<Condition>("Condition", CONDITION),
        modelCase<AccessRule>("AccessRule", RULE),
        modelCase<Application>("Application", APPLICATION),
        modelCase<ApplicationTemplate>(
            "ApplicationTemplate",
            R"({"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","name":"starter","description":"d",)"
            R"("application_type":"public","template_type":"default","is_starter":false,"rules":[)" RULE
            R"(],"permissions":["token:create"]})"),
        modelCase<ApplicationPaginatedList>(
            "ApplicationPaginatedList",
            R"({"pagination":{"total_items":1,"page_number":0,"page_size":10,"total_pages":1},"data":[)" APPLICATION
            "]}"),
        modelCase<CreateApplicationRequest>(
            "CreateApplicationRequest",
            R"({"name":"checkout","type":"public","expires_at":"not a date, sent as it is",)"
            R"("permissions":[],"rules":[)" RULE "]}",
            R"({"name":"checkout","type":"public"})", {"name", "type"}),
        modelCase<UpdateApplicationRequest>("UpdateApplicationRequest",
                                            R"({"name":"renamed","permissions":["token:read"],"rules":[{}]})",
                                            R"({"name":"renamed"})", {"name"}),
        modelCase<GetApplications>(
            "GetApplications",
            R"({"id":["E621E1F8-C36C-495A-93FC-0C247A3E6E5F","0D2A9A4E-51E4-4B1B-8A3E-3C6F3B0F5A11"],)"
            R"("type":["public"],"page":2,"size":50})"),
    };
    for (const auto& c : cases) testing::expectRoundTrips(c);
}

#undef APPLICATION
#undef RULE
#undef CONDITION

}  // namespace
}  // namespace korvane
