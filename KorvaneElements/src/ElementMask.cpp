#include "KorvaneElements/ElementMask.hpp"

#include <algorithm>

#include "ElementText.hpp"
#include "KorvaneElements/ElementTransform.hpp"
#include "MaskEditing.hpp"
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
// compiled with, as the phone's "range of regular expression" search does. A digit position
// ("[0-9]") is stricter: the whole character must be one ASCII digit, so that a digit carrying
// combining marks (a keycap, or a digit with an accent) is refused rather than found inside.
// Results are remembered for one application: a card number repeats few distinct digits.
class PositionTester {
public:
    bool accepts(const platform::Regex& regex, std::string_view character) {
        for (const auto& entry : seen_) {
            if (entry.regex == &regex && entry.character == character) {
                return entry.accepted;
            }
        }
        bool accepted = false;
        if (!hasDefaultOptions(regex.options())) {
            accepted = platform::regexSearch(regex.pattern(), character);
        } else if (regex.pattern() == "[0-9]") {
            accepted = character.size() == 1 && character[0] >= '0' && character[0] <= '9';
        } else {
            accepted = regex.search(character);
        }
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

// A position that takes a typed character: an expression, or the literal "_" that stands in
// for one. Every other literal is a separator the mask writes itself.
bool fillsFromInput(const MaskElement& element) {
    const auto* literal = std::get_if<std::string>(&element);
    return literal == nullptr || *literal == "_";
}

// One application of `mask` to `characters`. `mayTake(i)` can hold character `i` back (it is
// then dropped like a rejected one); `took(i)` hears of each character that fills a position.
// `unread`, when given, receives the index of the first character the mask never reached.
template <class MayTake, class Took>
std::string runMask(const ElementMask& mask, const std::vector<std::string_view>& characters, MayTake&& mayTake,
                    Took&& took, std::size_t* unread = nullptr) {
    std::size_t next = 0;  // the first character of the remaining input
    std::string output;
    output.reserve(characters.size() + mask.size());
    PositionTester tester;
    for (const MaskElement& element : mask) {
        if (next == characters.size()) {
            break;  // trailing literals are never added
        }
        const auto* literal = std::get_if<std::string>(&element);
        if (!fillsFromInput(element)) {
            output += *literal;
            continue;
        }
        while (next < characters.size()) {
            const std::size_t i = next++;
            if (!mayTake(i)) {
                continue;
            }
            if (literal != nullptr) {
                output += *literal;  // "_" replaces the character it takes
                took(i);
                break;
            }
            const auto* regex = std::get_if<RegexRef>(&element);
            if (regex != nullptr && *regex != nullptr && tester.accepts(**regex, characters[i])) {
                output += characters[i];
                took(i);
                break;
            }
        }
    }
    if (unread != nullptr) {
        *unread = next;
    }
    return output;
}

constexpr auto kTakeAll = [](std::size_t) { return true; };
constexpr auto kIgnore = [](std::size_t) {};

std::size_t offsetIn(std::string_view text, std::string_view character) {
    return static_cast<std::size_t>(character.data() - text.data());
}

// The characters of `masked`, an output of `mask`, that typed characters filled: output
// character i stands at mask position i.
std::vector<std::string_view> filled(const ElementMask& mask, std::string_view masked,
                                     std::vector<std::size_t>* ends = nullptr) {
    std::vector<std::string_view> result;
    const auto characters = internal::characters(masked);
    for (std::size_t i = 0; i < characters.size() && i < mask.size(); ++i) {
        if (fillsFromInput(mask[i])) {
            result.push_back(characters[i]);
            if (ends != nullptr) {
                ends->push_back(offsetIn(masked, characters[i]) + characters[i].size());
            }
        }
    }
    return result;
}

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
    return runMask(mask, internal::characters(text.value_or(std::string_view{})), kTakeAll, kIgnore);
}

namespace internal {

std::string admittedInsertion(const ElementMask& mask, std::string_view text, std::size_t from, std::size_t to,
                              std::string_view inserted) {
    const std::string rest = std::string(text.substr(0, from)).append(text.substr(to));
    std::size_t restFilled = 0;
    runMask(mask, characters(rest), kTakeAll, [&](std::size_t) { ++restFilled; });
    const auto capacity = static_cast<std::size_t>(std::ranges::count_if(mask, fillsFromInput));
    std::size_t room = capacity > restFilled ? capacity - restFilled : 0;
    // The inserted characters are split on their own: a combining mark typed after a digit is
    // a character of its own and is refused, never merged into the digit before it.
    std::vector<std::string_view> all = characters(text.substr(0, from));
    const std::size_t first = all.size();
    const auto insertedCharacters = characters(inserted);
    all.insert(all.end(), insertedCharacters.begin(), insertedCharacters.end());
    const std::size_t last = all.size();
    const auto after = characters(text.substr(to));
    all.insert(all.end(), after.begin(), after.end());
    std::string admitted;
    runMask(
        mask, all, [&](std::size_t i) { return i < first || i >= last || room > 0; },
        [&](std::size_t i) {
            if (i >= first && i < last) {
                admitted += all[i];
                --room;
            }
        });
    return admitted;
}

bool fitsMask(const ElementMask& mask, std::string_view text) {
    const auto characters = internal::characters(text);
    std::size_t unread = 0;
    runMask(mask, characters, kTakeAll, kIgnore, &unread);
    PositionTester tester;
    for (std::size_t i = unread; i < characters.size(); ++i) {
        for (const MaskElement& element : mask) {
            const auto* regex = std::get_if<RegexRef>(&element);
            if (fillsFromInput(element) && (regex == nullptr || (*regex && tester.accepts(**regex, characters[i])))) {
                return false;
            }
        }
    }
    return true;
}

CaretAnchor anchorCaret(const ElementMask& mask, std::string_view text, std::size_t caret) {
    const auto characters = internal::characters(text);
    CaretAnchor anchor;
    anchor.atEnd = caret >= text.size();
    const std::string masked = runMask(mask, characters, kTakeAll, [&](std::size_t i) {
        if (offsetIn(text, characters[i]) < caret) {
            ++anchor.filledBefore;
        }
    });
    for (std::string_view character : filled(mask, masked)) {
        anchor.filled.emplace_back(character);
    }
    return anchor;
}

std::size_t followCaret(CaretAnchor& anchor, const ElementMask& mask, std::string_view masked) {
    std::vector<std::size_t> ends;
    const std::vector<std::string_view> now = filled(mask, masked, &ends);
    const std::vector<std::string>& before = anchor.filled;
    const std::size_t shorter = std::min(before.size(), now.size());
    std::size_t prefix = 0;
    while (prefix < shorter && before[prefix] == now[prefix]) {
        ++prefix;
    }
    std::size_t suffix = 0;
    while (suffix < shorter - prefix && before[before.size() - 1 - suffix] == now[now.size() - 1 - suffix]) {
        ++suffix;
    }
    std::size_t& count = anchor.filledBefore;
    const std::size_t following = before.size() - std::min(count, before.size());
    if (following <= suffix) {
        count = now.size() - following;  // what changed lies before the caret
    } else if (count > prefix) {
        count = std::min(count, now.size());  // the change reached the caret's own character
    }
    anchor.filled.assign(now.begin(), now.end());
    if (anchor.atEnd) {
        return masked.size();
    }
    return count == 0 ? 0 : ends[count - 1];
}

std::optional<std::pair<std::size_t, std::size_t>> deletionBeforeSeparator(const ElementMask& mask,
                                                                           std::string_view masked, std::size_t caret) {
    const auto characters = internal::characters(masked.substr(0, caret));
    const auto isSeparator = [&](std::size_t i) {
        const auto* literal = i < mask.size() ? std::get_if<std::string>(&mask[i]) : nullptr;
        return literal != nullptr && *literal != "_" && *literal == characters[i];
    };
    if (characters.empty() || !isSeparator(characters.size() - 1)) {
        return std::nullopt;
    }
    std::size_t i = characters.size() - 1;
    while (i > 0 && isSeparator(i)) {
        --i;
    }
    if (isSeparator(i)) {
        return std::pair{caret, caret};  // only separators before the caret: nothing to delete
    }
    const std::size_t start = offsetIn(masked, characters[i]);
    return std::pair{start, start + characters[i].size()};
}

}  // namespace internal

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
