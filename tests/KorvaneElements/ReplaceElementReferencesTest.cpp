// The swap of element references for values: where it reaches, how values are converted, what
// an incomplete element stops, and what telemetry learns.

#include <gtest/gtest.h>

#include "AnyCodable/JsonWriter.hpp"
#include "ElementTestSupport.hpp"
#include "KorvaneElements/ElementReferenceValue.hpp"
#include "KorvaneElements/ElementValueReference.hpp"
#include "KorvaneElements/KorvaneElements.hpp"

namespace {

using namespace korvane::elements;
using anycodable::Map;
using anycodable::Value;

std::shared_ptr<ElementValueReference> reference(std::optional<std::string> text, std::optional<bool> complete = true,
                                                 std::optional<ElementValueType> type = ElementValueType::string) {
    ElementValueReference::ValueMethod method;
    if (text) method = [t = *text] { return t; };
    static int next = 0;
    return std::make_shared<ElementValueReference>("element-" + std::to_string(++next), method, complete, type);
}

std::string json(const Map& map) {
    return anycodable::toJson(Value(map)).value_or("<not encodable>");
}

TEST(ReplaceElementReferences, ReachesEveryNestedMapButNoArray) {
    Map level3{{"deep", elementValue(reference("3"))}};
    Map level2{{"mid", elementValue(reference("2"))}, {"level3", level3}};
    Map body{{"top", elementValue(reference("1"))},
             {"level2", level2},
             {"plain", 5},
             {"list", anycodable::Array{elementValue(reference("4242 in array"))}}};
    ASSERT_TRUE(KorvaneElements::replaceElementReferences(body, "POST /tokenize", "trace"));
    const auto& list = *body.find("list")->get<anycodable::Array>();
    EXPECT_NE(elementReferenceOf(list.at(0)), nullptr) << "arrays are not entered";
    EXPECT_EQ(json(body), "<not encodable>") << "an element left in an array is never written out";
    EXPECT_EQ(anycodable::description(Value(body)).find("4242"), std::string::npos);
    body.erase("list");
    EXPECT_EQ(json(body), R"({"top":"1","level2":{"mid":"2","level3":{"deep":"3"}},"plain":5})");
}

TEST(ReplaceElementReferences, ConvertsByValueTypeAndDropsWhatDoesNotParse) {
    struct Row {
        std::optional<ElementValueType> type;
        std::optional<std::string> text;
        std::optional<Value> expected;  // absent: the key is removed
    };
    const Row rows[] = {
        {ElementValueType::int_, "042", Value(std::int64_t{42})},
        {ElementValueType::int_, "-7", Value(std::int64_t{-7})},
        {ElementValueType::int_, "4.2", std::nullopt},
        {ElementValueType::int_, "", std::nullopt},
        {ElementValueType::int_, "99999999999999999999", std::nullopt},
        {ElementValueType::double_, "4.25", Value(4.25)},
        {ElementValueType::double_, "-1e3", Value(-1000.0)},
        {ElementValueType::double_, "abc", std::nullopt},
        {ElementValueType::double_, " 1", std::nullopt},
        {ElementValueType::bool_, "true", Value(true)},
        {ElementValueType::bool_, "false", Value(false)},
        {ElementValueType::bool_, "TRUE", std::nullopt},
        {ElementValueType::string, "12/39", Value("12/39")},
        {ElementValueType::string, std::nullopt, std::nullopt},
        {std::nullopt, "as text", Value("as text")},
        {std::nullopt, std::nullopt, std::nullopt},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text.value_or("<nil>") + " as " + std::string(row.type ? rawValue(*row.type) : "absent"));
        Map body{{"before", 1}, {"value", elementValue(reference(row.text, true, row.type))}, {"after", 2}};
        ASSERT_TRUE(KorvaneElements::replaceElementReferences(body, "POST /tokenize", "trace"));
        const Value* value = body.find("value");
        if (!row.expected) {
            EXPECT_EQ(value, nullptr);
            EXPECT_EQ(body.size(), 2u) << "its neighbours stay";
            continue;
        }
        ASSERT_NE(value, nullptr);
        EXPECT_TRUE(anycodable::equals(*value, *row.expected, anycodable::Flavor::codable))
            << anycodable::description(*value);
    }
}

TEST(ReplaceElementReferences, AnIncompleteElementStopsWithEarlierEntriesReplaced) {
    elements_test::TelemetryCapture telemetry;
    auto first = reference("1");
    auto incomplete = reference("42", false);
    Map body{{"first", elementValue(first)},
             {"nested", Map{{"bad", elementValue(incomplete)}}},
             {"last", elementValue(reference("3"))}};
    auto result = KorvaneElements::replaceElementReferences(body, "POST /tokens", "trace-1");
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), TokenizingError::invalidInput);
    EXPECT_EQ(*body.find("first")->get<std::string>(), "1");
    EXPECT_NE(elementReferenceOf(*body.find("last")), nullptr) << "the walk stopped";

    // Telemetry names the element, never its value.
    const auto line = [](const ElementValueReference& element, const char* message, const char* level) {
        return R"({"elementId":")" + element.elementId() + R"(","endpoint":"POST /tokens","KV-TRACE-ID":"trace-1",)" +
               R"("message":")" + message + R"(","level":")" + level + R"("})";
    };
    EXPECT_EQ(telemetry.bodies(),
              (std::vector<std::string>{line(*first, "Retrieving element value for API call", "info"),
                                        line(*incomplete, "Tried to tokenize while element is incomplete", "warn")}));
}

TEST(ReplaceElementReferences, APlainBodyIsUntouchedAndUnlogged) {
    elements_test::TelemetryCapture telemetry;
    Map body{{"type", "card"}, {"data", Map{{"n", 1}, {"list", anycodable::Array{1, "a"}}}}};
    const std::string before = json(body);
    ASSERT_TRUE(KorvaneElements::replaceElementReferences(body, "POST /tokenize", "t"));
    EXPECT_EQ(json(body), before);
    EXPECT_TRUE(telemetry.bodies().empty());
}

TEST(ReplaceElementReferencesDeathTest, ElementsWithoutACompletenessOrATypedValueStop) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    Map neverComputed{{"v", elementValue(reference("1", std::nullopt))}};
    EXPECT_DEATH((void)KorvaneElements::replaceElementReferences(neverComputed, "e", "t"), "isComplete");
    for (auto type : {ElementValueType::int_, ElementValueType::double_, ElementValueType::bool_}) {
        Map typedNil{{"v", elementValue(reference(std::nullopt, true, type))}};
        EXPECT_DEATH((void)KorvaneElements::replaceElementReferences(typedNil, "e", "t"), "value of element");
    }
}

}  // namespace
