#include "platform/Regex.hpp"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {

using platform::Regex;
using platform::RegexMatch;
using platform::Utf16Range;

Regex compiled(std::string_view pattern, const platform::RegexOptions& options = {}) {
    auto regex = Regex::compile(pattern, options);
    EXPECT_TRUE(regex.has_value()) << pattern;
    return *std::move(regex);
}

TEST(Regex, DigitClassCoversEveryScriptButAsciiRangeDoesNot) {
    const auto digit = compiled("\\d");
    const auto ascii = compiled("[0-9]");
    struct Case {
        const char* text;
        bool anyDigit;
        bool asciiDigit;
    };
    const Case cases[] = {
        {"7", true, true},
        {"٤", true, false} /* Arabic-Indic four */,
        {"５", true, false} /* fullwidth five */,
        {"a", false, false},
        {"", false, false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(digit.search(c.text), c.anyDigit) << c.text;
        EXPECT_EQ(ascii.search(c.text), c.asciiDigit) << c.text;
        EXPECT_EQ(platform::regexSearch("\\d", c.text), c.anyDigit) << c.text;
    }
}

TEST(Regex, MatchRangesCountUtf16UnitsAfterAnEmoji) {
    const auto regex = compiled("(\\d)(\\d)");
    const std::u16string text = u"\U0001F600ab12";  // the emoji is two UTF-16 units
    const auto match = regex.firstMatch(text);
    ASSERT_TRUE(match.has_value());
    EXPECT_EQ(match->range, (Utf16Range{4, 2}));
    ASSERT_EQ(match->groups.size(), 2u);
    EXPECT_EQ(match->groups[0], (Utf16Range{4, 1}));
    EXPECT_EQ(match->groups[1], (Utf16Range{5, 1}));
}

TEST(Regex, GroupThatTookNoPartIsAbsent) {
    const auto match = compiled("(a)|(b)").firstMatch(u"b");
    ASSERT_TRUE(match.has_value());
    EXPECT_EQ(match->groups[0], std::nullopt);
    EXPECT_EQ(match->groups[1], (Utf16Range{0, 1}));
}

TEST(Regex, RangeIsARegionWithAnchoringBounds) {
    const auto digit = compiled("\\d");
    EXPECT_EQ(digit.firstMatch(u"1a2", {1, 2})->range, (Utf16Range{2, 1}));
    EXPECT_FALSE(digit.firstMatch(u"1a2", {0, 0}).has_value());
    // `^` and `$` hold at the range's edges.
    EXPECT_EQ(compiled("^a$").firstMatch(u"bab", {1, 1})->range, (Utf16Range{1, 1}));
    // A range past the end is cut, not a crash.
    EXPECT_EQ(digit.firstMatch(u"ab3", {1, 1000})->range, (Utf16Range{2, 1}));
    EXPECT_FALSE(digit.firstMatch(u"ab3", {50, 2}).has_value());
    EXPECT_FALSE(digit.firstMatch(u"ab3", {SIZE_MAX, SIZE_MAX}).has_value());
}

TEST(Regex, WholeMatchVersusSearch) {
    const auto code = compiled("^[0-9]{3,4}$");
    EXPECT_TRUE(code.search("123"));
    EXPECT_TRUE(code.search("1234"));
    EXPECT_FALSE(code.search("12345"));
    const auto digits = compiled("\\d+");
    EXPECT_TRUE(digits.search("12a"));
    EXPECT_FALSE(digits.matchesWhole("12a"));
    EXPECT_TRUE(digits.matchesWhole(u"12"));
}

TEST(Regex, ReplaceAllWithTemplate) {
    struct Case {
        const char* pattern;
        const char* text;
        const char* replacement;
        const char* expected;
    };
    const Case cases[] = {
        {"(\\d{2})/(\\d{2})", "12/25", "$2-$1", "25-12"},
        {"\\s", "4242 4242 4242", "", "424242424242"},
        {"\\d", "a1b2", "\\$", "a$b$"},
        {"(\\d)", "a1", "<$0$1>", "a<11>"},
        {"x*", "ab", "-", "-a-b-"},
        {"(\\d)", "a1", "$7", "a1"},  // group 7 doesn't exist: text unchanged
    };
    for (const auto& c : cases) {
        EXPECT_EQ(compiled(c.pattern).replaceAll(std::string_view(c.text), std::string_view(c.replacement)), c.expected)
            << c.pattern << " on " << c.text;
    }
}

TEST(Regex, ReplaceAllKeepsTextOutsideTheRange) {
    const auto digit = compiled("\\d");
    EXPECT_EQ(digit.replaceAll(u"12345", {1, 2}, u"#"), u"1##45");
    // A range of the character count rather than the UTF-16 length leaves the tail of a text
    // with an emoji untouched.
    const std::u16string text = u"\U0001F600123";
    EXPECT_EQ(digit.replaceAll(text, {0, 4}, u""), u"\U0001F6003");
}

TEST(Regex, BadPatternIsAnErrorValue) {
    const auto bad = Regex::compile("a(b");
    ASSERT_FALSE(bad.has_value());
    EXPECT_EQ(bad.error().message, "U_REGEX_MISMATCHED_PAREN");
    EXPECT_FALSE(Regex::compile(u"[z-a]").has_value());
    EXPECT_FALSE(platform::regexSearch("a(b", "a(b"));
}

TEST(Regex, OptionsAndIntrospection) {
    const auto insensitive = compiled("visa", {.caseInsensitive = true});
    EXPECT_TRUE(insensitive.matchesWhole("VISA"));
    EXPECT_FALSE(compiled("visa").matchesWhole("VISA"));
    EXPECT_TRUE(insensitive.options().caseInsensitive);
    EXPECT_EQ(insensitive.pattern(), "visa");
    EXPECT_EQ(compiled("(a)(b(c))").captureGroupCount(), 3u);
}

TEST(Regex, CopiesShareOnePatternAcrossThreads) {
    const auto regex = compiled("^(\\d{2})/(\\d{2})$");
    std::vector<std::thread> threads;
    std::vector<int> failures(4, 0);
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([copy = regex, &failures, t] {
            for (int i = 0; i < 200; ++i) {
                if (!copy.matchesWhole("12/25") ||
                    copy.replaceAll(std::string_view("12/25"), std::string_view("$2$1")) != "2512") {
                    ++failures[t];
                }
            }
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(failures, std::vector<int>(4, 0));
}

}  // namespace
