// Application templates on the wire: the listing is a bare array, not a paginated list.

#include <gtest/gtest.h>

#include "Korvane/ApiWireTable.hpp"
#include "Korvane/ApplicationTemplatesAPI.hpp"

namespace korvane {
namespace {

using platform::Uuid;
using testing::decoded;
using testing::Finish;
using testing::WireRow;

const Uuid kOther = *Uuid::parse("0d2a9a4e-51e4-4b1b-8a3e-3c6f3b0f5a11");

class ApplicationTemplatesAPIWireTest : public testing::ApiWireTest {};

TEST_F(ApplicationTemplatesAPIWireTest, EveryOperationOnTheWire) {
    // clang-format off
    const std::vector<WireRow> rows = {
        {.api = "ApplicationTemplatesAPI", .operation = "callGet",
         .call = [](Finish done) {
             ApplicationTemplatesAPI::callGet(decoded<std::vector<ApplicationTemplate>>(
                 done, [](const std::vector<ApplicationTemplate>& templates) {
                     ASSERT_EQ(templates.size(), 2u);
                     EXPECT_EQ(templates[0].isStarter, true);
                     EXPECT_EQ(templates[0].rules->at(0).container, "/pci/");
                     EXPECT_EQ(templates[1], ApplicationTemplate{.name = "bare"});
                 }));
         },
         .response = R"([{"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","name":"starter","description":"d",
                          "application_type":"public","template_type":"default","is_starter":true,
                          "rules":[{"container":"/pci/"}],"permissions":["token:create"]},
                         {"name":"bare"}])",
         .method = "GET", .path = "/application-templates"},
        {.api = "ApplicationTemplatesAPI", .operation = "getById",
         .call = [](Finish done) {
             ApplicationTemplatesAPI::getById(kOther,
                 decoded<ApplicationTemplate>(done, [](const ApplicationTemplate& t) {
                     EXPECT_EQ(t.id, kOther);
                     EXPECT_EQ(t.applicationType, "private");
                 }));
         },
         .response = R"({"id":"0d2a9a4e-51e4-4b1b-8a3e-3c6f3b0f5a11","application_type":"private"})",
         .method = "GET", .path = "/application-templates/0D2A9A4E-51E4-4B1B-8A3E-3C6F3B0F5A11"},
    };
    // clang-format on
    testing::expectEveryOperationHasARow<ApplicationTemplatesAPI>(rows, "ApplicationTemplatesAPI");
    walk(rows);
}

}  // namespace
}  // namespace korvane
