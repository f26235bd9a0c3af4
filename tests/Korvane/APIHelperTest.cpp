#include "Korvane/APIHelper.hpp"
#include "Korvane/JSONEncodable.hpp"
#include "Korvane/MimeType.hpp"

#include <gtest/gtest.h>

namespace korvane {
namespace {

using anycodable::Array;
using anycodable::Value;
using Items = std::vector<platform::UrlQueryItem>;

TEST(APIHelperTest, RejectNilDropsAbsentAndEmptyBecomesAbsent) {
    auto kept = APIHelper::rejectNil(Parameters{{"a", Value()}, {"b", 1}, {"c", anycodable::Null{}}});
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->size(), 2u) << "JSON null is a present value";
    EXPECT_FALSE(APIHelper::rejectNil(Parameters{{"a", Value()}})) << "only absent values: absent, not empty";
}

TEST(APIHelperTest, HeaderValuesBecomeTexts) {
    auto id = *platform::Uuid::parse("e621e1f8-c36c-495a-93fc-0c247a3e6e5f");
    auto headers = APIHelper::rejectNilHeaders(
        Parameters{{"A", Array{Value("x"), Value(), Value(2)}}, {"B", Value()}, {"C", true}, {"D", id}, {"E", 1.0}});
    EXPECT_EQ(headers, (std::map<std::string, std::string>{
                           {"A", "x,2"}, {"C", "true"}, {"D", "E621E1F8-C36C-495A-93FC-0C247A3E6E5F"}, {"E", "1.0"}}));
}

TEST(APIHelperTest, BoolsToStringsAndPathItems) {
    auto converted = APIHelper::convertBoolToString(Parameters{{"a", true}, {"b", 1}});
    EXPECT_EQ(*converted->find("a")->get<std::string>(), "true");
    EXPECT_TRUE(converted->find("b")->is<std::int64_t>());
    EXPECT_FALSE(APIHelper::convertBoolToString(std::nullopt));

    EXPECT_EQ(*APIHelper::mapValueToPathItem(Array{Value("a"), Value(), Value("b")}).get<std::string>(), "a,b")
        << "no doubled commas";
    EXPECT_EQ(*APIHelper::mapValueToPathItem(5).get<std::int64_t>(), 5);
}

TEST(APIHelperTest, QueryItemsExplodeOrJoin) {
    struct Case {
        QueryParameters parameters;
        std::optional<Items> items;
        const char* why;
    };
    const Case cases[] = {
        {{{"id", {encodeToJSON(std::vector<std::string>{"a", "b"}), true}}},
         Items{{"id", "a"}, {"id", "b"}},
         "exploded array: the key repeated"},
        {{{"id", {Array{Value("a"), Value(), Value("b")}, false}}}, Items{{"id", "a,b"}}, "joined array"},
        {{{"id", {Array{}, true}}}, std::nullopt, "empty exploded array gives no item, and no items is absent"},
        {{{"page", {Value(), true}}, {"size", {Value(std::optional<int>()), true}}}, std::nullopt, "all absent"},
        {{{"size", {10, true}}, {"type", {"card", true}}}, Items{{"size", "10"}, {"type", "card"}}, "declared order"},
        {{{"metadata", {encodeToJSON(std::map<std::string, std::string>{{"key", "value"}}), false}}},
         Items{{"metadata", R"([AnyHashable("key"): "value"])"}},
         "a dictionary prints as the phone prints it"},
    };
    for (const auto& c : cases) EXPECT_EQ(APIHelper::mapValuesToQueryItems(c.parameters), c.items) << c.why;

    EXPECT_EQ(APIHelper::mapValuesToQueryItems(Parameters{{"t", Array{Value(1), Value(2)}}}),
              (Items{{"t", "1"}, {"t", "2"}}));
}

TEST(APIHelperTest, EncodeToJsonConversions) {
    auto id = *platform::Uuid::parse("e621e1f8-c36c-495a-93fc-0c247a3e6e5f");
    EXPECT_EQ(APIHelper::text(encodeToJSON(id)), "E621E1F8-C36C-495A-93FC-0C247A3E6E5F");
    EXPECT_EQ(APIHelper::text(encodeToJSON(std::map<std::string, std::string>{})), "[:]");
    EXPECT_EQ(APIHelper::text(encodeToJSON(anycodable::Date{std::chrono::seconds(0)})), "1970-01-01T00:00:00.000Z");
}

TEST(MimeTypeTest, ExtensionTableWithFallback) {
    EXPECT_EQ(mimeTypeForExtension("png"), "image/png");
    EXPECT_EQ(mimeTypeForExtension("JPG"), "image/jpeg");
    EXPECT_EQ(mimeTypeForExtension("json"), "application/json");
    EXPECT_EQ(mimeTypeForExtension(""), "application/octet-stream");
    EXPECT_EQ(mimeTypeForExtension("unknownext"), "application/octet-stream");
    EXPECT_EQ(mimeTypeForFile(platform::Url::fileUrl("/tmp/.profile")), "application/octet-stream");
    EXPECT_EQ(mimeTypeForFile(platform::Url::fileUrl("/tmp/a.b/report.pdf")), "application/pdf");
}

}  // namespace
}  // namespace korvane
