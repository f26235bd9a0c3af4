#include "KorvaneElements/ElementMask.hpp"

#include <algorithm>

#include "ElementText.hpp"
#include "KorvaneElements/ElementTransform.hpp"
#include "platform/Fatal.hpp"
#include "platform/Regex.hpp"
#include "platform/Text.hpp"

namespace korvane::elements {

namespace {

bool hasDefaultOptions(const platform::RegexOptions& o) {
    return !o.caseInsensitive && !o.allowCommentsAndWhitespace && !o.dotMatchesLineSeparators && !o.anchorsMatchLines &&
           !o.useUnixLineSeparators && !o.useUnicodeWordBoundaries;
}

// A position's test searches the expression's pattern alone, without the options it was
// compiled with, as the phone's "range of regular expression" search does. Results are
// remembered for one application: a card number repeats few distinct digits.
class PositionTester {
public:
    bool accepts(const platform::Regex& regex, std::string_view character) {
        for (const auto& entry : seen_) {
            if (entry.regex == &regex && entry.character == character) {
                return entry.accepted;
            }
        }
        bool accepted = hasDefaultOptions(regex.options()) ? regex.search(character)
                                                           : platform::regexSearch(regex.pattern(), character);
        seen_.push_back(Entry{&regex, character, accepted});
        return accepted;
    }

private:
    struct Entry {
        const platform::Regex* regex;
        std::string_view character;
        bool accepted;
    };
    std::vector<Entry> seen_;
};

}  // namespace

RegexRef compileElementRegex(std::string_view pattern) {
    auto compiled = platform::Regex::compile(pattern);
    if (!compiled) {
        platform::fatalStop("invalid regular expression pattern: " + std::string(pattern));
    }
    return std::make_shared<const platform::Regex>(std::move(*compiled));
}

bool isValidMask(const ElementMask& mask) {
    return std::ranges::all_of(mask, [](const MaskElement& element) {
        if (const auto* regex = std::get_if<RegexRef>(&element)) {
            return *regex != nullptr;
        }
        if (const auto* literal = std::get_if<std::string>(&element)) {
            return internal::characterCount(*literal) == 1;
        }
        return false;
    });
}

std::string applyMask(const ElementMask& mask, std::optional<std::string_view> text) {
    const std::string_view input = text.value_or(std::string_view{});
    const std::vector<std::string_view> characters = internal::characters(input);
    std::size_t next = 0;  // the first character of the remaining input
    std::string output;
    output.reserve(input.size() + mask.size());
    PositionTester tester;
    for (const MaskElement& element : mask) {
        if (next == characters.size()) {
            break;  // trailing literals are never added
        }
        const auto* literal = std::get_if<std::string>(&element);
        if (literal != nullptr && *literal != "_") {
            output += *literal;
            continue;
        }
        // A position to fill: an expression, or a literal "_" that stands in for one typed
        // character.
        while (next < characters.size()) {
            std::string_view taken = characters[next++];
            if (literal != nullptr) {
                output += *literal;
                break;
            }
            const auto* regex = std::get_if<RegexRef>(&element);
            if (regex != nullptr && *regex != nullptr && tester.accepts(**regex, taken)) {
                output += taken;
                break;
            }
        }
    }
    return output;
}

std::string applyElementTransform(const std::optional<ElementTransform>& transform,
                                  std::optional<std::string_view> text) {
    const std::string_view input = text.value_or(std::string_view{});
    if (!transform || !transform->matcher) {
        return std::string(input);
    }
    const std::u16string utf16 = platform::utf8ToUtf16(input);
    // The range deliberately counts characters, not UTF-16 units.
    const std::size_t length = std::min(internal::characterCount(input), utf16.size());
    const std::u16string replacement = platform::utf8ToUtf16(transform->stringReplacement.value_or(""));
    return platform::utf16ToUtf8(transform->matcher->replaceAll(utf16, platform::Utf16Range{0, length}, replacement));
}

}  // namespace korvane::elements
