#include "platform/Http.hpp"

#include <gtest/gtest.h>

namespace {

using platform::HttpHeaders;

TEST(HttpHeaders, LookupIgnoresCaseButKeepsSpelling) {
    HttpHeaders headers{{"Content-Type", "application/json"}, {"KV-TRACE-ID", "t1"}};
    EXPECT_EQ(headers.get("content-type"), "application/json");
    EXPECT_EQ(headers.get("kv-trace-id"), "t1");
    EXPECT_FALSE(headers.get("Content-Length").has_value());
    EXPECT_TRUE(headers.contains("CONTENT-TYPE"));
    EXPECT_EQ(headers.fields().at(1).first, "KV-TRACE-ID");
}

TEST(HttpHeaders, SetReplacesInPlaceAndDropsLaterDuplicates) {
    HttpHeaders headers;
    headers.add("Accept", "a");
    headers.add("X-One", "1");
    headers.add("accept", "b");
    headers.set("ACCEPT", "c");
    ASSERT_EQ(headers.size(), 2u);
    EXPECT_EQ(headers.fields().at(0), (HttpHeaders::Field{"ACCEPT", "c"}));
    EXPECT_EQ(headers.fields().at(1), (HttpHeaders::Field{"X-One", "1"}));

    headers.set("X-Two", "2");  // absent: appended at the end
    EXPECT_EQ(headers.fields().back(), (HttpHeaders::Field{"X-Two", "2"}));
}

TEST(HttpHeaders, AddKeepsRepeatedFieldsInOrder) {
    HttpHeaders headers;
    headers.add("Set-Cookie", "a=1");
    headers.add("X", "y");
    headers.add("set-cookie", "b=2");
    EXPECT_EQ(headers.getAll("SET-COOKIE"), (std::vector<std::string>{"a=1", "b=2"}));
    EXPECT_EQ(headers.get("Set-Cookie"), "a=1");
    EXPECT_EQ(headers.remove("Set-Cookie"), 2u);
    EXPECT_EQ(headers.size(), 1u);
}

TEST(HttpEqualsIgnoringCase, OnlyAsciiLettersFold) {
    EXPECT_TRUE(platform::equalsIgnoringCase("Content-Type", "cONTENT-tYPE"));
    EXPECT_FALSE(platform::equalsIgnoringCase("Content-Type", "Content-Typ"));
    EXPECT_FALSE(platform::equalsIgnoringCase("[", "{"));  // differ by 0x20 but are not letters
}

}  // namespace
