#include "platform/Uuid.hpp"

#include <gtest/gtest.h>

#include <unordered_set>

namespace {

TEST(Uuid, RandomIsVersion4UpperCaseAndDistinct) {
    std::unordered_set<platform::Uuid> seen;
    for (int i = 0; i < 64; ++i) {
        const auto uuid = platform::Uuid::random();
        const auto text = uuid.string();
        ASSERT_EQ(text.size(), 36u);
        EXPECT_EQ(text[14], '4') << text;
        EXPECT_NE(std::string("89AB").find(text[19]), std::string::npos) << "RFC 4122 variant: " << text;
        for (char c : text) EXPECT_FALSE(c >= 'a' && c <= 'f') << text;
        EXPECT_TRUE(seen.insert(uuid).second);
    }
}

TEST(Uuid, ParseRoundTripsAndAcceptsEitherCase) {
    const auto upper = platform::Uuid::parse("E621E1F8-C36C-495A-93FC-0C247A3E6E5F");
    const auto lower = platform::Uuid::parse("e621e1f8-c36c-495a-93fc-0c247a3e6e5f");
    ASSERT_TRUE(upper && lower);
    EXPECT_EQ(*upper, *lower);
    EXPECT_EQ(lower->string(), "E621E1F8-C36C-495A-93FC-0C247A3E6E5F");
}

TEST(Uuid, ParseRejectsMalformedText) {
    for (const char* bad : {
             "",                                        // empty
             "E621E1F8C36C495A93FC0C247A3E6E5F",        // no dashes
             "E621E1F8-C36C-495A-93FC-0C247A3E6E5",     // one digit short
             "E621E1F8-C36C-495A-93FC-0C247A3E6E5F0",   // one digit long
             "G621E1F8-C36C-495A-93FC-0C247A3E6E5F",    // not hexadecimal
             "E621E1F8-C36C-495A93FC-0C247A3E6E5F-",    // dash in the wrong place
             "{E621E1F8-C36C-495A-93FC-0C247A3E6E5F}",  // braces
         }) {
        EXPECT_FALSE(platform::Uuid::parse(bad)) << bad;
    }
}

}  // namespace
