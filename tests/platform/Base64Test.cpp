#include "platform/Base64.hpp"

#include <gtest/gtest.h>

namespace {

struct Vector {
    const char* plain;
    const char* encoded;
};

// RFC 4648 section 10, which covers every padding length.
constexpr Vector kRfcVectors[] = {
    {"", ""},
    {"f", "Zg=="},
    {"fo", "Zm8="},
    {"foo", "Zm9v"},
    {"foob", "Zm9vYg=="},
    {"fooba", "Zm9vYmE="},
    {"foobar", "Zm9vYmFy"},
};

TEST(Base64, RfcVectorsBothWays) {
    for (const auto& v : kRfcVectors) {
        EXPECT_EQ(platform::base64Encode(v.plain), v.encoded);
        EXPECT_EQ(platform::base64Decode(v.encoded), std::optional<std::string>(v.plain)) << v.encoded;
    }
}

TEST(Base64, BinaryBytesRoundTrip) {
    std::string bytes;
    for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
    EXPECT_EQ(platform::base64Decode(platform::base64Encode(bytes)), bytes);
}

TEST(Base64, DecodingRejectsInvalidInput) {
    for (const char* bad : {
             "Zg",        // missing padding
             "Zg=",       // length not a multiple of four
             "Z===",      // too much padding
             "Zg==Zg==",  // padding in the middle
             "Zm9v\n",    // white space
             "Zm9-",      // URL-safe alphabet is not the standard one
             "Zm=v",      // padding followed by data
         }) {
        EXPECT_FALSE(platform::base64Decode(bad)) << bad;
    }
}

}  // namespace
