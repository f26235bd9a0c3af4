#include "platform/Text.hpp"

#include <gtest/gtest.h>

namespace {

using namespace platform;

TEST(Text, ConversionsRoundTripAndReplaceIllFormedInput) {
    const std::string mixed = "a\u20AC\U0001F600";  // one, two and four UTF-16 units... in bytes 1, 3, 4
    EXPECT_EQ(utf8ToUtf16(mixed), u"a\u20AC\U0001F600");
    EXPECT_EQ(utf16ToUtf8(utf8ToUtf16(mixed)), mixed);
    EXPECT_EQ(utf16Length(mixed), 4u);

    struct Case {
        std::string utf8;
        std::u16string utf16;
        const char* why;
    };
    const Case cases[] = {
        {"\xFF", u"\uFFFD", "a byte that never starts a sequence"},
        {"a\xE2\x82", u"a\uFFFD", "a truncated sequence is one replacement"},
        {"\xE2\x82"
         "a",
         u"\uFFFDa", "the byte after a truncated sequence survives"},
        {"\xC0\xAF", u"\uFFFD\uFFFD", "an overlong encoding is two bad bytes"},
        {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD", "an encoded surrogate is refused"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(utf8ToUtf16(c.utf8), c.utf16) << c.why;
        EXPECT_EQ(utf16Length(c.utf8), c.utf16.size()) << c.why;
    }
    EXPECT_EQ(utf16ToUtf8(u"\xD800"
                          u"a"),
              "\uFFFD"
              "a");  // unpaired surrogate
    EXPECT_EQ(utf16ToUtf8(std::u16string(1, u'\xDC00')), "\uFFFD");
}

TEST(Text, CharacterCountIsUserPerceived) {
    struct Case {
        const char* text;
        std::size_t count;
        const char* why;
    };
    const Case cases[] = {
        {"", 0, "empty"},
        {"abc", 3, "ASCII"},
        {"e\u0301", 1, "e with a combining acute"},
        {"\U0001F1FA\U0001F1F8", 1, "a flag of two regional indicators"},
        {"\U0001F468\u200D\U0001F469\u200D\U0001F467", 1, "a family joined by ZWJ"},
        {"\U0001F44D\U0001F3FD", 1, "an emoji with a skin tone"},
        {"\U0001F600"
         "12/25",
         6, "an emoji and five ASCII characters"},
        {"\r\n", 1, "CR LF"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(characterCount(std::string_view(c.text)), c.count) << c.why;
        EXPECT_EQ(characterCount(std::u16string_view(utf8ToUtf16(c.text))), c.count) << c.why;
    }
    EXPECT_EQ(characters("e\u0301x\U0001F1FA\U0001F1F8"),
              (std::vector<std::string>{"e\u0301", "x", "\U0001F1FA\U0001F1F8"}));
}

TEST(Text, OffsetsBetweenEncodings) {
    const std::string text = "a\U0001F600b";  // bytes 0 | 1-4 | 5; units 0 | 1-2 | 3
    struct Case {
        std::size_t utf16;
        std::optional<std::size_t> utf8;
    };
    const Case toBytes[] = {{0, 0}, {1, 1}, {2, std::nullopt} /* inside the pair */, {3, 5}, {4, 6}, {5, std::nullopt}};
    for (const auto& c : toBytes) EXPECT_EQ(utf8Offset(text, c.utf16), c.utf8) << c.utf16;

    const Case toUnits[] = {{0, 0}, {1, 1}, {3, 5}, {4, 6}};
    for (const auto& c : toUnits) EXPECT_EQ(utf16Offset(text, *c.utf8), c.utf16) << *c.utf8;
    EXPECT_EQ(utf16Offset(text, 2), std::nullopt);  // inside the emoji's bytes
    EXPECT_EQ(utf16Offset(text, 7), std::nullopt);
}

TEST(Text, NumbersAndWholeNumberValues) {
    struct Case {
        const char* character;
        bool number;
        std::optional<std::int64_t> value;
        const char* why;
    };
    const Case cases[] = {
        {"7", true, 7, "ASCII digit"},
        {"\u0664", true, 4, "Arabic-Indic four"},
        {"\u216B", true, 12, "Roman numeral twelve"},
        {"\u4E07", true, 10000, "CJK ten thousand"},
        {"\u00BD", true, std::nullopt, "one half is a number but not whole"},
        {"7\u20E3", true, std::nullopt, "a keycap is two code points"},
        {"a", false, std::nullopt, "letter"},
        {"$", false, std::nullopt, "symbol"},
        {"", false, std::nullopt, "empty"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(isNumber(c.character), c.number) << c.why;
        EXPECT_EQ(wholeNumberValue(c.character), c.value) << c.why;
    }
}

}  // namespace
