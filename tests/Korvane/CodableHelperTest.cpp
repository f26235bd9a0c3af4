#include "Korvane/CodableHelper.hpp"
#include "Korvane/Configuration.hpp"
#include "platform/DateFormatter.hpp"

#include <gtest/gtest.h>

#include <array>

namespace korvane {
namespace {

using anycodable::AnyCodable;
using Kind = DecodingError::Kind;

struct Key {
    std::string key;
    std::optional<std::string> alg;
    friend bool operator==(const Key&, const Key&) = default;
    static constexpr auto jsonFields() { return fields(required("key", &Key::key), optional("alg", &Key::alg)); }
};

enum class Level { low, high, unknown };
constexpr auto jsonCases(Level) {
    return std::array{std::pair{Level::low, std::string_view("low")}, std::pair{Level::high, std::string_view("high")},
                      std::pair{Level::unknown, std::string_view("unknown")}};
}
constexpr bool caseIterableDefaultsLast(Level) {
    return true;
}

struct Record {
    std::optional<platform::Uuid> tenantId;
    std::optional<std::map<std::string, std::string>> metadata;
    std::optional<Key> cek;
    std::optional<Date> createdAt;
    std::optional<std::vector<Key>> keys;
    std::optional<std::int32_t> count;
    std::optional<Level> level;
    friend bool operator==(const Record&, const Record&) = default;
    static constexpr auto jsonFields() {
        return fields(optional("tenant_id", &Record::tenantId), optional("metadata", &Record::metadata),
                      optional("cek", &Record::cek), optional("created_at", &Record::createdAt),
                      optional("keys", &Record::keys), optional("count", &Record::count),
                      optional("level", &Record::level));
    }
};

struct Problem {
    std::optional<std::string> title;
    std::optional<std::int64_t> status;
    AdditionalProperties additionalProperties;
    friend bool operator==(const Problem&, const Problem&) = default;
    static constexpr auto jsonFields() {
        return fields(optional("title", &Problem::title), optional("status", &Problem::status),
                      korvane::additionalProperties(&Problem::additionalProperties));
    }
};

struct Patch {
    NullEncodable<std::string> name;
    friend bool operator==(const Patch&, const Patch&) = default;
    static constexpr auto jsonFields() { return fields(nullable("name", &Patch::name)); }
};

class CodableHelperTest : public ::testing::Test {
protected:
    void SetUp() override { CodableHelper::resetForTesting(); }
    void TearDown() override { CodableHelper::resetForTesting(); }
    JSONEncoder compact_;
    JSONDecoder plain_;
};

TEST_F(CodableHelperTest, DecodeFailuresAreValuesWithKindAndPath) {
    struct Case {
        std::string json;
        Kind kind;
        anycodable::CodingPath path;
        const char* why;
    };
    const Case cases[] = {
        {R"({"cek":{"alg":"x"}})", Kind::keyNotFound, {"cek"}, "required key missing"},
        {R"({"cek":{"key":null}})", Kind::valueNotFound, {"cek", "key"}, "null for a required value"},
        {R"({"tenant_id":"not-a-uuid"})", Kind::dataCorrupted, {"tenant_id"}, "malformed UUID"},
        {R"({"keys":[{"key":"a"},{"key":5}]})", Kind::typeMismatch, {"keys", "Index 1", "key"}, "number for string"},
        {R"({"count":4111111111111111.5})", Kind::dataCorrupted, {"count"}, "fraction for an integer"},
        {R"({"count":4111111111})", Kind::dataCorrupted, {"count"}, "beyond 32 bits"},
        {R"({"count":true})", Kind::typeMismatch, {"count"}, "bool is not a number"},
        {R"({"created_at":"yesterday"})", Kind::dataCorrupted, {"created_at"}, "date not in the format"},
        {R"({"created_at":"2024-01-15T12:00:00.)" + std::string(35, '1') + R"(Z"})",
         Kind::dataCorrupted,
         {"created_at"},
         "35 fraction digits fail the decode, not the process"},
        {R"({"metadata":{"a":1}})", Kind::typeMismatch, {"metadata", "a"}, "map value of the wrong type"},
        {R"([])", Kind::typeMismatch, {}, "array for a model"},
        {R"({"id":"4111111111111111)", Kind::dataCorrupted, {}, "truncated body"},
    };
    for (const auto& c : cases) {
        auto decoded = CodableHelper::decode<Record>(c.json);
        ASSERT_FALSE(decoded) << c.why;
        EXPECT_EQ(decoded.error().kind, c.kind) << c.why << ": " << decoded.error().description();
        EXPECT_EQ(decoded.error().description().find("4111"), std::string::npos) << "the error quotes the input";
        if (c.kind != Kind::dataCorrupted || !c.path.empty()) {
            EXPECT_EQ(decoded.error().codingPath, c.path) << c.why;
        }
    }
}

TEST_F(CodableHelperTest, IntegralNumberWithZeroFractionFitsAnIntegerField) {
    auto decoded = plain_.decode<Record>(R"({"count":3.0})");
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->count, 3);
}

TEST_F(CodableHelperTest, UnknownEnumValueDefaultsToLastCase) {
    auto decoded = plain_.decode<Record>(R"({"level":"extreme"})");
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->level, Level::unknown);
}

TEST_F(CodableHelperTest, OpenContentKeepsEveryUnnamedKey) {
    auto decoded = plain_.decode<Problem>(R"({"title":"Bad","extra":{"a":[1]},"status":400,"trace":"t"})");
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->status, 400);
    EXPECT_EQ(decoded->additionalProperties.size(), 2u);
    EXPECT_EQ(additionalProperty(decoded->additionalProperties, "trace"), AnyCodable("t"));
    setAdditionalProperty(decoded->additionalProperties, "trace", std::nullopt);
    setAdditionalProperty(decoded->additionalProperties, "title", AnyCodable("shadow"));
    EXPECT_EQ(*compact_.encode(*decoded), R"({"title":"Bad","status":400,"extra":{"a":[1]}})")
        << "pairs follow the named fields; a pair named like a field is not written twice";
}

TEST_F(CodableHelperTest, NullEncodableTellsNothingFromNull) {
    EXPECT_EQ(*compact_.encode(Patch{}), "{}");
    EXPECT_EQ(*compact_.encode(Patch{NullEncodable<std::string>::encodeNull()}), R"({"name":null})");
    EXPECT_EQ(*compact_.encode(Patch{NullEncodable<std::string>::encodeValue("a")}), R"({"name":"a"})");
    EXPECT_TRUE(plain_.decode<Patch>("{}")->name.isNothing());
    EXPECT_TRUE(plain_.decode<Patch>(R"({"name":null})")->name.isNull());
    EXPECT_TRUE(plain_.decode<Patch>(R"({"name":5})")->name.isNothing()) << "a value that doesn't decode";
    EXPECT_EQ(plain_.decode<Patch>(R"({"name":"v"})")->name, NullEncodable<std::string>::encodeValue("v"));
}

TEST_F(CodableHelperTest, DateFormatterReadsInThreeSteps) {
    auto formatter = CodableHelper::dateFormatter();
    auto at = [](std::int64_t ms) { return Date{std::chrono::milliseconds(ms)}; };
    EXPECT_EQ(formatter->date("2024-05-01T10:00:00.123Z"), at(1714557600123));
    EXPECT_EQ(formatter->date("2024-05-01T10:00:00.123456789Z"), at(1714557600123)) << "nanoseconds truncate";
    EXPECT_EQ(formatter->date("2024-05-01T12:00:00+02:00"), at(1714557600000)) << "second step";
    EXPECT_EQ(formatter->date("2024-05-01"), at(1714521600000)) << "third step: midnight GMT";
    EXPECT_FALSE(formatter->date("2024-05-01T10:00"));
    EXPECT_FALSE(formatter->date("2024-02-30"));
    EXPECT_EQ(formatter->string(at(1714557600000)), "2024-05-01T10:00:00.000Z");
}

// The read has a shortcut for the common shapes; whatever it answers must be what the three
// ICU steps answer, so this compares the two on the shapes at the edges of the shortcut.
TEST_F(CodableHelperTest, DateShortcutAgreesWithTheThreeStepRead) {
    const platform::DateFormatterOptions options{
        .locale = "en_US_POSIX", .timeZone = "GMT", .calendar = platform::CalendarKind::iso8601, .lenient = false};
    std::vector<platform::DateFormatter> steps;
    for (const char* pattern : {"yyyy-MM-dd'T'HH:mm:ss.SSSZZZZZ", "yyyy-MM-dd'T'HH:mm:ssZZZZZ", "yyyy-MM-dd"}) {
        steps.push_back(*platform::DateFormatter::make(pattern, options));
    }
    auto reference = [&](std::string_view text) -> std::optional<Date> {
        for (const auto& step : steps) {
            if (auto parsed = step.parse(text)) {
                return Date(std::chrono::round<std::chrono::milliseconds>(parsed->time_since_epoch()));
            }
        }
        return std::nullopt;
    };
    const char* texts[] = {
        "2024-01-15T12:00:00.123Z",
        "2024-02-29T23:59:59.999Z",
        "2023-02-29T00:00:00.000Z" /* no leap day */,
        "2024-04-31T00:00:00.000Z",
        "2024-12-31T23:30:00.000-01:00" /* next year in GMT */,
        "1900-01-01T00:00:00.000Z",
        "2199-12-31T23:59:59.999Z",
        "2024-01-15T12:00:00+05:30",
        "2024-01-15T12:00:00.000+14:00",
        "2024-01-15T24:00:00.000Z",
        "2024-01-15T12:60:00.000Z",
        "2024-01-15T12:00:60.000Z",
        "2024-13-01T00:00:00.000Z",
        "2024-00-10T00:00:00.000Z",
        "2024-01-15T12:00:00.12Z",
        "2024-01-15T12:00:00.1234Z",
        "2024-01-15T12:00:00.123Z ",
        "2024-01-15T12:00:00.123",
        "2024-01-15T12:00:00.123+0200",
        "2024-01-15t12:00:00.123Z",
        "+024-01-15T12:00:00.123Z",
        "2024-01-15",
    };
    auto formatter = std::make_shared<OpenISO8601DateFormatter>();
    for (const char* text : texts) {
        SCOPED_TRACE(text);
        EXPECT_EQ(formatter->date(text), reference(text));
    }
}

TEST_F(CodableHelperTest, DefaultCodersCaptureTheFormatterOnFirstBuild) {
    auto custom = std::make_shared<OpenISO8601DateFormatter>();
    ASSERT_TRUE(custom->setDateFormat("yyyy"));
    Record record;
    record.createdAt = Date{std::chrono::milliseconds(1714557600000)};

    CodableHelper::setDateFormatter(custom);
    EXPECT_NE(CodableHelper::encode(record)->find("\"2024\""), std::string::npos) << "set before first use";

    CodableHelper::resetForTesting();
    auto before = CodableHelper::encode(record);
    CodableHelper::setDateFormatter(custom);
    EXPECT_EQ(CodableHelper::encode(record), before) << "the default kept the formatter it captured";
    EXPECT_EQ(CodableHelper::dateFormatter(), custom) << "readers of dateFormatter() see the new one";
}

TEST_F(CodableHelperTest, OverrideSlotsWinOverDefaults) {
    auto encoder = std::make_shared<JSONEncoder>();
    CodableHelper::setJsonEncoder(encoder);
    EXPECT_EQ(*CodableHelper::encode(Key{"k", std::nullopt}), R"({"key":"k"})");
    CodableHelper::setJsonEncoder(nullptr);
    EXPECT_NE(CodableHelper::encode(Key{"k", std::nullopt})->find('\n'), std::string::npos);
}

TEST(ConfigurationTest, SuccessRangeIsHalfOpen) {
    auto range = Configuration::successfulStatusCodeRange();
    EXPECT_FALSE(range.contains(199));
    EXPECT_TRUE(range.contains(200));
    EXPECT_TRUE(range.contains(299));
    EXPECT_FALSE(range.contains(300));
    EXPECT_EQ(Configuration::dateFormat(), "yyyy-MM-dd'T'HH:mm:ss.SSSZZZZZ");
}

}  // namespace
}  // namespace korvane
