// The operation table: names come from the same rows as the members, and a wire table that
// misses an operation fails by name.

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include "Korvane/OperationTable.hpp"
#include "Korvane/WireTable.hpp"

namespace korvane {
namespace {

using testing::WireRow;

#define KORVANE_SAMPLE_API(row)                                                                      \
    row(callGet, operation<Void>(HTTPMethod::get, "/things", query<std::vector<std::string>>("id"))) \
        row(delete_, operation<Void>(HTTPMethod::delete_, "/things/{id}", path("id")))

struct SampleAPI {
    KORVANE_OPERATIONS(KORVANE_SAMPLE_API)
};

#undef KORVANE_SAMPLE_API

TEST(OperationTable, NamesFollowTheRowsAndMembersKeepBothForms) {
    static_assert(SampleAPI::operationNames.size() == 2);
    EXPECT_EQ(SampleAPI::operationNames[0], "callGet");
    EXPECT_EQ(SampleAPI::operationNames[1], "delete_");
    EXPECT_EQ(SampleAPI::delete_.method(), HTTPMethod::delete_);
    EXPECT_EQ(SampleAPI::delete_.pathTemplate(), "/things/{id}");
}

TEST(OperationTable, AMissingWireRowFailsNamingTheOperation) {
    const std::vector<WireRow> onlyGet = {{.call = {.api = "SampleAPI", .operation = "callGet"}}};
    EXPECT_NONFATAL_FAILURE(testing::expectEveryOperationHasARow<SampleAPI>(onlyGet, "SampleAPI"),
                            "no wire row for SampleAPI.delete_");
    const std::vector<WireRow> otherApi = {{.call = {.api = "OtherAPI", .operation = "callGet"}},
                                           {.call = {.api = "SampleAPI", .operation = "delete_"}}};
    EXPECT_NONFATAL_FAILURE(testing::expectEveryOperationHasARow<SampleAPI>(otherApi, "SampleAPI"),
                            "no wire row for SampleAPI.callGet");
}

}  // namespace
}  // namespace korvane
