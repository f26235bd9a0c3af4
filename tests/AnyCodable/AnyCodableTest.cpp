#include "AnyCodable/AnyCodable.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace anycodable {
namespace {

// Index of the alternative a document reads as, named for readable failures.
template <class T>
bool readsAs(std::string_view json) {
    auto read = AnyCodable::fromJson(json);
    return read && read->value.is<T>();
}

TEST(AnyCodableRead, TypeTestsRunInThePhoneOrder) {
    EXPECT_TRUE(readsAs<bool>("true")) << "bool is tried before int";
    EXPECT_TRUE(readsAs<std::int64_t>("1"));
    EXPECT_TRUE(readsAs<std::int64_t>("-1"));
    EXPECT_TRUE(readsAs<std::int64_t>("1.0")) << "a zero fraction is taken as int first";
    EXPECT_TRUE(readsAs<std::int64_t>("1e2"));
    EXPECT_TRUE(readsAs<std::int64_t>("9223372036854775807"));
    EXPECT_TRUE(readsAs<std::uint64_t>("9223372036854775808")) << "too large for int, fits unsigned";
    EXPECT_TRUE(readsAs<std::uint64_t>("18446744073709551615"));
    EXPECT_TRUE(readsAs<double>("18446744073709551616")) << "beyond unsigned: double";
    EXPECT_TRUE(readsAs<double>("1.5"));
    EXPECT_TRUE(readsAs<std::string>("\"1\""));
    EXPECT_TRUE(readsAs<Null>("null"));
    EXPECT_TRUE(readsAs<Array>("[]"));
    EXPECT_TRUE(readsAs<Map>("{}"));
}

TEST(AnyCodableRead, NestedNullStaysNullInsideArraysAndMaps) {
    auto read = AnyCodable::fromJson(R"({"a":[1,null,{"b":null}]})");
    ASSERT_TRUE(read);
    const auto& a = *read->value.get<Map>()->find("a")->get<Array>();
    ASSERT_EQ(a.size(), 3u);
    EXPECT_TRUE(a[1].isNull());
    EXPECT_TRUE(a[2].get<Map>()->find("b")->isNull());
}

// Large enough that the map answers from its hash index.
TEST(AnyCodableRead, RepeatedKeyKeepsLastValueInFirstPosition) {
    std::string json = R"({"k":1,"x":2,)";
    for (int i = 0; i < 200; ++i) json += "\"k" + std::to_string(i % 100) + "\":" + std::to_string(i) + ",";
    auto read = AnyCodable::fromJson(json + R"("k":3})");
    ASSERT_TRUE(read);
    const auto& map = *read->value.get<Map>();
    EXPECT_EQ(map.size(), 102u);
    EXPECT_EQ(map.begin()->first, "k");
    EXPECT_EQ(*map.find("k")->get<std::int64_t>(), 3);
    EXPECT_EQ(*map.find("k7")->get<std::int64_t>(), 107);
}

TEST(AnyCodableRead, BadInputIsAnErrorValueNamingKindAndOffsetNeverContent) {
    struct Case {
        std::string json;
        const char* message;
        const char* why;
    };
    const std::string notJson = "The given data was not valid JSON: ";
    const Case cases[] = {
        {"", "unexpected end of input at offset 0.", "empty document"},
        {"{\"a\":\"4111111111111111", "unexpected end of input at offset 22.", "truncated"},
        {"[1,]", "unexpected character at offset 3.", "trailing comma"},
        {"\"\xff\"", "unexpected character at offset 1.", "invalid UTF-8 in a string"},
        {"[4111111111111111x]", "unexpected character at offset 17.", "a number running into a letter"},
        {"{} {}", "unexpected character at offset 3.", "two documents"},
        {"4111111111111111e400", "", "number outside the double range"},
        {std::string(10000, '[') + std::string(10000, ']'), "", "10,000 levels of nesting"},
    };
    for (const auto& c : cases) {
        auto read = AnyCodable::fromJson(c.json);
        ASSERT_FALSE(read) << c.why;
        EXPECT_EQ(read.error().kind, DecodingError::Kind::dataCorrupted) << c.why;
        EXPECT_EQ(read.error().description().find("4111"), std::string::npos) << c.why << ": quotes the input";
        if (*c.message) {
            EXPECT_EQ(read.error().debugDescription, notJson + c.message) << c.why;
        }
    }
}

TEST(AnyCodableRead, DepthLimitIsExactAndNamesNoKey) {
    EXPECT_TRUE(readJson(std::string(512, '[') + std::string(512, ']')));
    auto tooDeep = readJson(R"({"4111111111111111":[[[1]]]})", {.maxDepth = 3});
    ASSERT_FALSE(tooDeep);
    EXPECT_EQ(tooDeep.error().description(), "dataCorrupted: The JSON is nested more than 3 levels deep.");
}

TEST(AnyCodableWrite, EmptyAndNullBothWriteNullButReadBackAsNull) {
    AnyCodable empty;
    auto text = empty.toJson();
    ASSERT_TRUE(text);
    EXPECT_EQ(*text, "null");
    auto back = AnyCodable::fromJson(*text);
    ASSERT_TRUE(back);
    EXPECT_TRUE(back->value.isNull());
    EXPECT_NE(*back, empty) << "the empty value and JSON null are different values";
}

TEST(AnyCodableWrite, ScalarsCollectionsAndSizedNumbers) {
    std::optional<int> absent;
    auto value = AnyCodable::map({{"a", AnyCodable::array({1, absent, "x"}).value},
                                  {"b", Int8{-5}},
                                  {"c", UInt64{18446744073709551615ULL}},
                                  {"d", 0.1f},
                                  {"e", 2.5},
                                  {"f", true}});
    auto text = value.toJson();
    ASSERT_TRUE(text) << text.error().description();
    EXPECT_EQ(*text, R"({"a":[1,null,"x"],"b":-5,"c":18446744073709551615,"d":0.1,"e":2.5,"f":true})");
}

TEST(AnyCodableWrite, PrettyPrintingIndentsTwoSpaces) {
    auto text = AnyCodable::map({{"a", 1}, {"b", Array{}}, {"c", Array{Value(2)}}}).toJson({.prettyPrinted = true});
    ASSERT_TRUE(text);
    EXPECT_EQ(*text, "{\n  \"a\" : 1,\n  \"b\" : [],\n  \"c\" : [\n    2\n  ]\n}");
}

TEST(AnyCodableWrite, DatesGoThroughTheDateStrategy) {
    Date date{std::chrono::seconds(978307200 + 10)};
    EXPECT_EQ(*AnyCodable(date).toJson(), "10") << "default: seconds since 2001";
    auto text = AnyCodable(date).toJson({.formatDate = [](Date) { return std::string("custom"); }});
    EXPECT_EQ(*text, "\"custom\"");
    EXPECT_EQ(*AnyCodable(*platform::Url::parse("https://x.test/a?b=1")).toJson(), "\"https://x.test/a?b=1\"");
}

struct Unencodable final : OtherValue {
    bool encode(JsonWriter&) const override { return false; }
    std::string description() const override { return "Unencodable"; }
};

TEST(AnyCodableWrite, FailuresCarryMessageAndPath) {
    struct Case {
        AnyCodable value;
        std::string message;
        CodingPath path;
    };
    const Case cases[] = {
        {AnyCodable::map({{"x", Array{Value(1), Value(std::make_shared<Unencodable>())}}}),
         "AnyEncodable value cannot be encoded",
         {"x", "Index 1"}},
        {AnyCodable::array({std::nan("")}), "Unable to encode Double.nan directly in JSON.", {"Index 0"}},
        {AnyCodable::map({{"s", std::string("\xc3")}}), "The string is not valid UTF-8.", {"s"}},
    };
    for (const auto& c : cases) {
        auto text = c.value.toJson();
        ASSERT_FALSE(text) << c.message;
        EXPECT_EQ(text.error().debugDescription, c.message);
        EXPECT_EQ(text.error().codingPath, c.path) << c.message;
    }
}

TEST(AnyCodableWrite, StringsGoOutOnlyAsWellFormedUtf8) {
    const struct {
        std::string text;
        bool written;
        const char* why;
    } cases[] = {
        {"\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80", true, "two, three and four bytes"},
        {"\xF4\x8F\xBF\xBF", true, "the last code point"},
        {"\x80", false, "a stray continuation byte"},
        {"\xE2\x82", false, "a sequence cut short by the end"},
        {"\xE2\x28\xAC", false, "a sequence cut short by another character"},
        {"\xC0\xAF", false, "an overlong form"},
        {"\xED\xA0\x80", false, "an encoded surrogate"},
        {"\xF4\x90\x80\x80", false, "past U+10FFFF"},
        {"\xF8\x88\x80\x80\x80", false, "a five-byte form"},
    };
    for (const auto& c : cases) {
        auto json = AnyCodable(c.text).toJson();
        EXPECT_EQ(json.has_value(), c.written) << c.why;
        if (json) {
            EXPECT_EQ(*json, "\"" + c.text + "\"") << c.why;
        } else {
            EXPECT_EQ(json.error().debugDescription, "The string is not valid UTF-8.") << c.why;
        }
    }
}

TEST(AnyCodableEquality, NoNumericWidening) {
    EXPECT_NE(AnyCodable(1), AnyCodable(1.0));
    EXPECT_NE(AnyCodable(1), AnyCodable(Int32{1}));
    EXPECT_NE(AnyCodable(1.0f), AnyCodable(1.0));
    EXPECT_NE(AnyCodable(true), AnyCodable(1));
    EXPECT_NE(AnyCodable(1), AnyCodable(1u));
    EXPECT_EQ(AnyCodable(Int32{1}), AnyCodable(Int32{1}));
    EXPECT_EQ(AnyCodable(0.0), AnyCodable(-0.0));
}

TEST(AnyCodableEquality, NullAndEmptyPerWrapper) {
    EXPECT_EQ(AnyCodable(Null{}), AnyCodable(Null{}));
    EXPECT_EQ(AnyDecodable(Null{}), AnyDecodable(Null{}));
    EXPECT_NE(AnyEncodable(Null{}), AnyEncodable(Null{})) << "AnyEncodable has no null case";
    EXPECT_EQ(AnyCodable(), AnyCodable(nullptr));
    EXPECT_EQ(AnyDecodable(), AnyDecodable());
    EXPECT_EQ(AnyEncodable(), AnyEncodable());
}

TEST(AnyCodableEquality, CollectionsAndKindsOutsideTheTests) {
    auto ab = AnyCodable::map({{"a", 1}, {"b", "x"}});
    auto ba = AnyCodable::map({{"b", "x"}, {"a", 1}});
    EXPECT_EQ(ab, ba);
    EXPECT_EQ(std::hash<AnyCodable>{}(ab), std::hash<AnyCodable>{}(ba)) << "map hash is order-independent";
    EXPECT_NE(ab, AnyCodable::map({{"a", 1}}));
    EXPECT_EQ(AnyCodable::map({{"k", 1}, {"k", 2}}), AnyCodable::map({{"k", 1}})) << "a literal keeps the first";
    EXPECT_NE(AnyCodable::array({1, 2}), AnyCodable::array({2, 1}));
    EXPECT_NE(AnyCodable::array({1}), AnyCodable::array({1.0}));
    auto id = platform::Uuid::random();
    EXPECT_NE(AnyCodable(id), AnyCodable(id)) << "UUIDs are not among the compared kinds";
}

// Each step runs on a map and on a plain list searched linearly; afterwards both hold the same
// entries in the same order and agree on every lookup, present or absent. The map is large
// enough to answer from its hash index.
TEST(AnyCodableMap, AgreesWithALinearListAcrossItsIndex) {
    enum class Op { insert, set, erase };
    struct Step {
        Op op;
        int from, to;
        const char* why;
    };
    const Step steps[] = {
        {Op::set, 0, 40, "grows past the linear limit and through index growths"},
        {Op::set, 5, 10, "an existing key changes its value in place"},
        {Op::insert, 35, 45, "insert adds only the new keys; the first value wins"},
        {Op::erase, 10, 20, "erasing moves every later entry; lookups past the gap still land"},
        {Op::insert, 10, 15, "erased keys come back at the end"},
        {Op::erase, 0, 45, "shrinking below the limit goes back to linear lookups"},
        {Op::set, 50, 80, "and growing again indexes again"},
    };
    Map map;
    std::vector<std::pair<std::string, int>> list;
    const auto inList = [&](const std::string& key) {
        return std::find_if(list.begin(), list.end(), [&](const auto& e) { return e.first == key; });
    };
    int stamp = 0;
    for (const auto& step : steps) {
        SCOPED_TRACE(step.why);
        ++stamp;
        for (int k = step.from; k < step.to; ++k) {
            const std::string key = "k" + std::to_string(k);
            const int value = stamp * 1000 + k;
            const auto found = inList(key);
            if (step.op == Op::erase) {
                EXPECT_EQ(map.erase(key), found != list.end());
                if (found != list.end()) list.erase(found);
            } else if (step.op == Op::insert) {
                EXPECT_EQ(map.insert(key, value), found == list.end());
                if (found == list.end()) list.emplace_back(key, value);
            } else {
                map.set(key, value);
                if (found == list.end())
                    list.emplace_back(key, value);
                else
                    found->second = value;
            }
        }
        ASSERT_EQ(map.size(), list.size());
        std::size_t i = 0;
        for (const auto& [key, value] : map) {
            EXPECT_EQ(key, list[i].first);
            EXPECT_EQ(*value.get<std::int64_t>(), list[i++].second);
        }
        for (int k = 0; k < 90; ++k) {
            const std::string key = "k" + std::to_string(k);
            const auto found = inList(key);
            const Value* value = map.find(key);
            ASSERT_EQ(value != nullptr, found != list.end()) << key;
            if (value) {
                EXPECT_EQ(*value->get<std::int64_t>(), found->second) << key;
            }
        }
    }
}

TEST(AnyCodableHash, EqualValuesHashEqual) {
    std::hash<AnyCodable> h;
    EXPECT_EQ(h(AnyCodable(0.0)), h(AnyCodable(-0.0)));
    EXPECT_EQ(h(AnyCodable(0.0f)), h(AnyCodable(-0.0f)));
    EXPECT_NE(h(AnyCodable::array({1, 2})), h(AnyCodable::array({2, 1})));
}

TEST(AnyCodableText, DescriptionAndDebugDescription) {
    struct Case {
        AnyCodable value;
        std::string description;
        std::string debug;
    };
    const Case cases[] = {
        {AnyCodable(), "nil", "AnyCodable(nil)"},
        {AnyCodable(Null{}), "<null>", "AnyCodable(<null>)"},
        {AnyCodable("a\"b"), "a\"b", R"(AnyCodable("a\"b"))"},
        {AnyCodable(1), "1", "AnyCodable(1)"},
        {AnyCodable(1.0), "1.0", "AnyCodable(1.0)"},
        {AnyCodable(false), "false", "AnyCodable(false)"},
        {AnyCodable::array({1, "a", Null{}, nullptr}), R"([1, "a", <null>, ()])",
         R"(AnyCodable([1, "a", <null>, ()]))"},
        {AnyCodable::map({{"k", "v"}}), R"(["k": "v"])", R"(AnyCodable(["k": "v"]))"},
        {AnyCodable(Map{}), "[:]", "AnyCodable([:])"},
        {AnyCodable(Date{std::chrono::seconds(0)}), "1970-01-01 00:00:00 +0000",
         "AnyCodable(1970-01-01 00:00:00 +0000)"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.value.description(), c.description);
        EXPECT_EQ(c.value.debugDescription(), c.debug);
    }
    EXPECT_EQ(AnyDecodable("x").debugDescription(), R"(AnyDecodable("x"))");
    EXPECT_EQ(AnyEncodable(2).debugDescription(), "AnyEncodable(2)");
}

TEST(AnyCodableText, FloatingValuesPrintAsThePhoneDoes) {
    struct Case {
        double value;
        const char* text;
    };
    const Case cases[] = {
        {1.0, "1.0"},
        {-0.0, "-0.0"},
        {0.1, "0.1"},
        {0.0001, "0.0001"},
        {0.00001, "1e-05"},
        {1e16, "1e+16"},
        {123.456, "123.456"},
        {1e20, "1e+20"},
        {-2.5e-7, "-2.5e-07"},
        {9007199254740992.0, "9007199254740992.0"},
        {std::numeric_limits<double>::infinity(), "inf"},
    };
    for (const auto& c : cases) EXPECT_EQ(doubleText(c.value), c.text) << c.value;
    EXPECT_EQ(floatText(0.1f), "0.1");
    EXPECT_EQ(doubleText(std::nan("")), "nan");
}

}  // namespace
}  // namespace anycodable
