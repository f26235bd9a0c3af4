#include "platform/Regex.hpp"

#include <unicode/regex.h>

#include "IcuSupport.hpp"
#include "platform/Text.hpp"

namespace platform {

struct Regex::Compiled {
    std::string pattern;
    RegexOptions options;
    // ICU documents compiled patterns as immutable and safe to share between threads; every
    // call below makes its own matcher from it.
    std::unique_ptr<icu::RegexPattern> icu;
};

namespace {

uint32_t icuFlags(const RegexOptions& options) {
    uint32_t flags = 0;
    if (options.caseInsensitive) flags |= UREGEX_CASE_INSENSITIVE;
    if (options.allowCommentsAndWhitespace) flags |= UREGEX_COMMENTS;
    if (options.dotMatchesLineSeparators) flags |= UREGEX_DOTALL;
    if (options.anchorsMatchLines) flags |= UREGEX_MULTILINE;
    if (options.useUnixLineSeparators) flags |= UREGEX_UNIX_LINES;
    if (options.useUnicodeWordBoundaries) flags |= UREGEX_UWORD;
    return flags;
}

// `range` cut to the text, as [start, end).
std::pair<int32_t, int32_t> clamp(Utf16Range range, std::size_t size) {
    const std::size_t start = std::min(range.location, size);
    const std::size_t end = range.length > size - start ? size : start + range.length;
    return {static_cast<int32_t>(start), static_cast<int32_t>(end)};
}

// A read-only alias of `text`: no copy, and `text` must outlive it and every matcher reading
// it (a matcher keeps a reference to its input, so a temporary here would dangle).
icu::UnicodeString alias(std::u16string_view text) {
    return icu::UnicodeString(false, text.data(), static_cast<int32_t>(text.size()));
}

Utf16Range rangeOf(int32_t start, int32_t end) {
    return Utf16Range{static_cast<std::size_t>(start), static_cast<std::size_t>(end - start)};
}

}  // namespace

std::expected<Regex, RegexError> Regex::compile(std::u16string_view pattern, const RegexOptions& options) {
    const icu::UnicodeString source = internal::toIcu(pattern);
    UParseError parseError{};
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::RegexPattern> compiled(
        icu::RegexPattern::compile(source, icuFlags(options), parseError, status));
    if (U_FAILURE(status) || !compiled) {
        return std::unexpected(
            RegexError{u_errorName(status), static_cast<std::size_t>(std::max(parseError.offset, 0))});
    }
    auto made = std::make_shared<Compiled>();
    made->pattern = utf16ToUtf8(pattern);
    made->options = options;
    made->icu = std::move(compiled);
    return Regex(std::move(made));
}

std::expected<Regex, RegexError> Regex::compile(std::string_view pattern, const RegexOptions& options) {
    return compile(std::u16string_view(utf8ToUtf16(pattern)), options);
}

const std::string& Regex::pattern() const {
    return compiled_->pattern;
}

const RegexOptions& Regex::options() const {
    return compiled_->options;
}

std::size_t Regex::captureGroupCount() const {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::RegexMatcher> matcher(compiled_->icu->matcher(status));
    return U_SUCCESS(status) ? static_cast<std::size_t>(matcher->groupCount()) : 0;
}

std::optional<RegexMatch> Regex::firstMatch(std::u16string_view text, Utf16Range range) const {
    const icu::UnicodeString input = alias(text);
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::RegexMatcher> matcher(compiled_->icu->matcher(input, status));
    if (U_FAILURE(status)) return std::nullopt;
    const auto [start, end] = clamp(range, text.size());
    matcher->region(start, end, status);
    if (!matcher->find(status) || U_FAILURE(status)) return std::nullopt;

    RegexMatch match;
    match.range = rangeOf(matcher->start(status), matcher->end(status));
    const int32_t groups = matcher->groupCount();
    match.groups.reserve(static_cast<std::size_t>(groups));
    for (int32_t g = 1; g <= groups; ++g) {
        const int32_t groupStart = matcher->start(g, status);
        if (groupStart < 0) {
            match.groups.emplace_back(std::nullopt);
        } else {
            match.groups.emplace_back(rangeOf(groupStart, matcher->end(g, status)));
        }
    }
    if (U_FAILURE(status)) return std::nullopt;
    return match;
}

std::optional<RegexMatch> Regex::firstMatch(std::u16string_view text) const {
    return firstMatch(text, Utf16Range{0, text.size()});
}

bool Regex::search(std::u16string_view text) const {
    const icu::UnicodeString input = alias(text);
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::RegexMatcher> matcher(compiled_->icu->matcher(input, status));
    if (U_FAILURE(status)) return false;
    const bool found = matcher->find(status);
    return U_SUCCESS(status) && found;
}

bool Regex::search(std::string_view text) const {
    return search(std::u16string_view(utf8ToUtf16(text)));
}

bool Regex::matchesWhole(std::u16string_view text) const {
    const icu::UnicodeString input = alias(text);
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::RegexMatcher> matcher(compiled_->icu->matcher(input, status));
    if (U_FAILURE(status)) return false;
    const bool matched = matcher->matches(status);
    return U_SUCCESS(status) && matched;
}

bool Regex::matchesWhole(std::string_view text) const {
    return matchesWhole(std::u16string_view(utf8ToUtf16(text)));
}

std::u16string Regex::replaceAll(std::u16string_view text, Utf16Range range,
                                 std::u16string_view replacementTemplate) const {
    const icu::UnicodeString input = alias(text);
    const icu::UnicodeString replacement = alias(replacementTemplate);
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::RegexMatcher> matcher(compiled_->icu->matcher(input, status));
    if (U_FAILURE(status)) return std::u16string(text);
    const auto [start, end] = clamp(range, text.size());
    matcher->region(start, end, status);
    // appendReplacement copies the text before each match from the start of the input, and
    // appendTail the rest to the input's end, so text outside the range stays as it was.
    icu::UnicodeString result;
    while (U_SUCCESS(status) && matcher->find(status)) {
        matcher->appendReplacement(result, replacement, status);
    }
    if (U_FAILURE(status)) return std::u16string(text);
    matcher->appendTail(result);
    return internal::toU16(result);
}

std::u16string Regex::replaceAll(std::u16string_view text, std::u16string_view replacementTemplate) const {
    return replaceAll(text, Utf16Range{0, text.size()}, replacementTemplate);
}

std::string Regex::replaceAll(std::string_view text, std::string_view replacementTemplate) const {
    const std::u16string source = utf8ToUtf16(text);
    const std::u16string replacement = utf8ToUtf16(replacementTemplate);
    return utf16ToUtf8(replaceAll(std::u16string_view(source), std::u16string_view(replacement)));
}

bool regexSearch(std::string_view pattern, std::string_view text, const RegexOptions& options) {
    auto compiled = Regex::compile(pattern, options);
    return compiled && compiled->search(text);
}

}  // namespace platform
