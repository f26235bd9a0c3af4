// The mask engine and the transform, independent of any field.

#include <gtest/gtest.h>

#include "KorvaneElements/CardBrand.hpp"
#include "KorvaneElements/ElementMask.hpp"
#include "KorvaneElements/ElementTransform.hpp"

namespace {

using namespace korvane::elements;

const RegexRef& digit() {
    return CardBrand::digitMaskRegex();
}
ElementMask expiry() {
    return {digit(), digit(), std::string("/"), digit(), digit()};
}

TEST(ApplyMask, Cases) {
    struct Case {
        ElementMask mask;
        std::optional<std::string> input;
        std::string expected;
        const char* why;
    };
    const Case cases[] = {
        {expiry(), "1225", "12/25", "the literal is written between digits"},
        {expiry(), "12", "12", "trailing literals are never added"},
        {expiry(), "ab1", "1", "rejected characters use no position"},
        {expiry(), "12/25", "12/25", "re-masking its own output is stable"},
        {expiry(), "122599", "12/25", "input beyond the mask is dropped"},
        {expiry(), std::nullopt, "", "absent text reads as empty"},
        {{digit(), std::string("_"), digit()}, "123", "1_3", "a literal underscore replaces the next character"},
        {{digit(), std::string("_"), digit()}, "1", "1", "no input left for the underscore position"},
        {{std::string("("), digit(), std::string(")")}, "7", "(7", "a leading literal needs remaining input"},
        {expiry(), "١٢/٣٠", "", "digits of other scripts are not 0-9"},
        {expiry(), "1😀2 3x4", "12/34", "emoji, blanks and letters are dropped"},
        {{digit(), digit()},
         "4\xCC\x81"
         "2",
         "2",
         "a digit with a combining mark is one character, and no digit"},
        {{digit(), digit()},
         "4\xEF\xB8\x8F\xE2\x83\xA3"
         "5",
         "5",
         "a keycap is no digit either"},
        {{}, "123", "", "the empty mask takes nothing"},
        {{compileElementRegex("[A-Z]"), compileElementRegex("a|b")},
         "xQzb",
         "Qb",
         "a host pattern is searched in a character, not matched whole"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(applyMask(c.mask, c.input), c.expected) << c.why;
    }
}

TEST(IsValidMask, Shapes) {
    struct Case {
        ElementMask mask;
        bool valid;
        const char* why;
    };
    const Case cases[] = {
        {{}, true, "empty"},
        {expiry(), true, "expressions and one-character literals"},
        {{std::string("é")}, true, "one user-perceived character, two bytes"},
        {{std::string("ab")}, false, "a literal of two characters"},
        {{std::string("")}, false, "an empty literal"},
        {{std::int64_t{4}}, false, "a number"},
        {{2.5}, false, "a double"},
        {{RegexRef{}}, false, "a null expression"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(isValidMask(c.mask), c.valid) << c.why;
    }
}

TEST(ElementTransformApply, ReplacesWithTemplateWithinTheCharacterCount) {
    ElementTransform blanks{compileElementRegex("[ \t]"), std::nullopt};
    EXPECT_EQ(applyElementTransform(blanks, "4242 4242\t42"), "4242424242");
    ElementTransform groups{compileElementRegex("(\\d\\d)/(\\d\\d)"), "$2-$1"};
    EXPECT_EQ(applyElementTransform(groups, "12/30"), "30-12");
    EXPECT_EQ(applyElementTransform(std::nullopt, std::nullopt), "");
    // "😀" counts one character but two units: the range stops one unit short of the end,
    // so the last blank survives.
    EXPECT_EQ(applyElementTransform(blanks, "😀 a "), "😀a ");
}

}  // namespace
