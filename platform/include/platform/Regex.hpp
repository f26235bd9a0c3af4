#pragma once
// Regex: compiled regular expressions with the phone's syntax and semantics.
//
// Syntax is ICU's, which the phone's regular expressions share: `\d` is any Unicode decimal
// digit (so "٤" passes a `\d` mask; check with [0-9] where only ASCII may follow), `\w` and
// `\b` are Unicode-aware, templates use `$0`..`$9` and `\$`. Positions and ranges count UTF-16
// units, like the phone's string ranges; UTF-8 overloads convert first and are there for
// convenience where no range is involved.
//
//   auto digits = platform::Regex::compile("^[0-9]{3,4}$");
//   if (!digits) log(digits.error().message);
//   bool ok = digits->search("123");
//
// A range is searched as a region with anchoring bounds and opaque bounds, as on the phone:
// `^` and `$` match at the range's edges and look-around doesn't see past them. A range that
// reaches past the text is cut at the text's end.
//
// Thread safety: a compiled Regex is immutable; copies share the compiled pattern and any
// member may be called from several threads at once.

#include <cstddef>
#include <expected>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// A range of UTF-16 units, as the phone's string ranges.
struct Utf16Range {
    std::size_t location = 0;
    std::size_t length = 0;

    [[nodiscard]] std::size_t end() const { return location + length; }
    friend bool operator==(const Utf16Range&, const Utf16Range&) = default;
};

struct RegexOptions {
    bool caseInsensitive = false;
    bool allowCommentsAndWhitespace = false;
    bool dotMatchesLineSeparators = false;
    bool anchorsMatchLines = false;
    bool useUnixLineSeparators = false;
    bool useUnicodeWordBoundaries = false;
};

struct RegexError {
    std::string message;     // ICU's error name, such as "U_REGEX_MISMATCHED_PAREN"
    std::size_t offset = 0;  // UTF-16 offset in the pattern where compilation failed
};

struct RegexMatch {
    Utf16Range range;
    // One entry per capture group, group 1 first; absent for a group that took no part.
    std::vector<std::optional<Utf16Range>> groups;
};

class Regex {
public:
    // A pattern that doesn't compile is an error value, never a crash.
    [[nodiscard]] static std::expected<Regex, RegexError> compile(std::u16string_view pattern,
                                                                  const RegexOptions& options = {});
    [[nodiscard]] static std::expected<Regex, RegexError> compile(std::string_view pattern,
                                                                  const RegexOptions& options = {});

    // The pattern as given (UTF-8).
    [[nodiscard]] const std::string& pattern() const;
    [[nodiscard]] const RegexOptions& options() const;
    [[nodiscard]] std::size_t captureGroupCount() const;

    // The first match inside `range` of `text`.
    [[nodiscard]] std::optional<RegexMatch> firstMatch(std::u16string_view text, Utf16Range range) const;
    // The first match in the whole of `text`.
    [[nodiscard]] std::optional<RegexMatch> firstMatch(std::u16string_view text) const;

    // Whether the pattern matches anywhere in `text`.
    [[nodiscard]] bool search(std::u16string_view text) const;
    [[nodiscard]] bool search(std::string_view text) const;

    // Whether the pattern matches the whole of `text`.
    [[nodiscard]] bool matchesWhole(std::u16string_view text) const;
    [[nodiscard]] bool matchesWhole(std::string_view text) const;

    // Every match inside `range` replaced by `replacementTemplate`; text outside the range is
    // kept. A template that names a group the pattern lacks (`$7` with two groups) leaves the
    // text unchanged, since the phone would raise there and this layer never does.
    [[nodiscard]] std::u16string replaceAll(std::u16string_view text, Utf16Range range,
                                            std::u16string_view replacementTemplate) const;
    [[nodiscard]] std::u16string replaceAll(std::u16string_view text, std::u16string_view replacementTemplate) const;
    [[nodiscard]] std::string replaceAll(std::string_view text, std::string_view replacementTemplate) const;

private:
    struct Compiled;
    explicit Regex(std::shared_ptr<const Compiled> compiled) : compiled_(std::move(compiled)) {}
    std::shared_ptr<const Compiled> compiled_;
};

// Whether `pattern` matches anywhere in `text`, compiling it for this one use; false when it
// doesn't compile. The phone's "range of regular expression in string" search.
[[nodiscard]] bool regexSearch(std::string_view pattern, std::string_view text, const RegexOptions& options = {});

}  // namespace platform
