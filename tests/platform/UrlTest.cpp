#include "platform/Url.hpp"

#include <gtest/gtest.h>

namespace platform {
namespace {

TEST(UrlTest, PercentEncodingSetsPerComponent) {
    // Every printable ASCII character that some set escapes, and one multi-byte character.
    const std::string text = " \"#%<>?[\\]^`{|}&=;/:@+é";
    EXPECT_EQ(percentEncode(text, UrlCharacterSet::path),
              "%20%22%23%25%3C%3E%3F%5B%5C%5D%5E%60%7B%7C%7D&=%3B/:@+%C3%A9");
    EXPECT_EQ(percentEncode(text, UrlCharacterSet::query), "%20%22%23%25%3C%3E?%5B%5C%5D%5E%60%7B%7C%7D&=;/:@+%C3%A9");
    EXPECT_EQ(percentEncode(text, UrlCharacterSet::queryItem),
              "%20%22%23%25%3C%3E?%5B%5C%5D%5E%60%7B%7C%7D%26%3D;/:@+%C3%A9");
    EXPECT_EQ(percentEncode("AZaz09-._~!$'()*,", UrlCharacterSet::path), "AZaz09-._~!$'()*,");
}

TEST(UrlTest, DecodingRejectsMalformedEscapes) {
    EXPECT_EQ(percentDecode("a%20b%C3%A9"), "a bé");
    EXPECT_FALSE(percentDecode("%4"));
    EXPECT_FALSE(percentDecode("%G1"));
    EXPECT_FALSE(percentDecode("%FF")) << "not UTF-8";
}

TEST(UrlTest, ParseIsStrictAndRoundTrips) {
    for (const char* good : {"https://user:pw@host.test:8443/a/b%20c?x=1&y#frag", "https://h.test", "/relative?q",
                             "file:///tmp/a.txt", "https://[::1]:80/"}) {
        auto url = Url::parse(good);
        ASSERT_TRUE(url) << good;
        EXPECT_EQ(url->string(), good);
    }
    struct Bad {
        const char* url;
        const char* why;
    };
    const Bad bad[] = {
        {"https://h.test/a b", "a space"},
        {"https://h.test/%zz", "a broken escape"},
        {"https://h.test:port/", "a port that is no number"},
        {"https://h.test:65536/", "a port beyond 16 bits"},
        {"1http://x", "a scheme starting with a digit"},
        {"https://h.test/\"", "a quote"},
        {"https://h.test/é", "a raw non-ASCII byte"},
        {"http://[::1", "an unclosed IPv6 bracket"},
        {"http://[::1/a]", "a path inside the brackets"},
        {"http://[::1]x/", "text after the bracket that is no port"},
        {"http://h]t:80/", "a bracket in a name"},
        {"http://[]/", "empty brackets"},
    };
    for (const auto& b : bad) EXPECT_FALSE(Url::parse(b.url)) << b.url << ": " << b.why;
}

TEST(UrlTest, ComponentsAndQueryItems) {
    auto url = *Url::parse("https://h.test:8080/dir/file.tar.gz?a=1&b=x%20y&c");
    EXPECT_EQ(url.port(), 8080);
    EXPECT_EQ(url.lastPathComponent(), "file.tar.gz");
    EXPECT_EQ(url.pathExtension(), "gz");
    EXPECT_EQ(url.queryItems(), (std::vector<UrlQueryItem>{{"a", "1"}, {"b", "x y"}, {"c", std::nullopt}}));
    url.setQueryItems(std::vector<UrlQueryItem>{{"k", "v&w"}, {"n", std::nullopt}});
    EXPECT_EQ(url.string(), "https://h.test:8080/dir/file.tar.gz?k=v%26w&n");
    url.setQueryItems(std::nullopt);
    EXPECT_EQ(url.string(), "https://h.test:8080/dir/file.tar.gz");
    EXPECT_EQ(Url::fileUrl("/tmp/my file.txt").string(), "file:///tmp/my%20file.txt");
    EXPECT_EQ(Url::fileUrl("/tmp/my file.txt").lastPathComponent(), "my file.txt");
    EXPECT_EQ(Url::parse("https://h.test/")->lastPathComponent(), "/");
}

}  // namespace
}  // namespace platform
