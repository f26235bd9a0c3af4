#pragma once
// URLs and their components, with the phone's rules for which characters stay unescaped.
//
// `Url` holds an absolute or relative URL split into components, each kept in its
// percent-encoded form. `Url::parse` is strict like the phone's URL parser of the targeted OS
// versions: a character outside the component's allowed set (a space, a quote, a raw
// non-ASCII byte) or a malformed escape makes the whole string invalid; nothing is repaired.
//
// Character sets (ASCII only; every other byte, including each byte of a multi-byte UTF-8
// sequence, is always escaped as "%XX" with upper-case hex digits; "%" is always escaped):
//   path       A-Z a-z 0-9 - . _ ~ ! $ & ' ( ) * + , / : = @        (no ";", no "?")
//   query      the path set plus ; and ?
//   queryItem  the query set without & and =  (name and value of one query item)
//   fragment   the query set
//   user/password/host: unreserved, sub-delims and ";" (host also "[", "]", ":" for IPv6)
//
// Values are immutable apart from `setQueryItems`; a Url may be shared between threads for
// reading.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

enum class UrlCharacterSet { user, password, host, path, query, queryItem, fragment };

[[nodiscard]] bool isUrlAllowed(char c, UrlCharacterSet set);

// Escapes every byte of `text` that is not in `allowed`.
[[nodiscard]] std::string percentEncode(std::string_view text, UrlCharacterSet allowed);

// Replaces each "%XX" by its byte. A "%" not followed by two hex digits, or a result that is
// not valid UTF-8, gives absent, as the phone's `removingPercentEncoding` does.
[[nodiscard]] std::optional<std::string> percentDecode(std::string_view text);

struct UrlQueryItem {
    std::string name;
    std::optional<std::string> value;  // absent: the item is written as its bare name

    friend bool operator==(const UrlQueryItem&, const UrlQueryItem&) = default;
};

class Url {
public:
    // Absent when the text is not a valid URL reference (see the file comment).
    [[nodiscard]] static std::optional<Url> parse(std::string_view text);

    // "file://" followed by the escaped absolute path.
    [[nodiscard]] static Url fileUrl(const std::filesystem::path& path);

    // The whole URL, percent-encoded, as it goes on the wire.
    [[nodiscard]] std::string string() const;

    [[nodiscard]] const std::optional<std::string>& scheme() const { return scheme_; }
    [[nodiscard]] const std::optional<std::string>& percentEncodedHost() const { return host_; }
    [[nodiscard]] std::optional<int> port() const { return port_; }
    [[nodiscard]] const std::string& percentEncodedPath() const { return path_; }
    [[nodiscard]] const std::optional<std::string>& percentEncodedQuery() const { return query_; }
    [[nodiscard]] const std::optional<std::string>& percentEncodedFragment() const { return fragment_; }

    // Decoded forms; a component whose escapes don't decode reads as its encoded text.
    [[nodiscard]] std::string path() const;
    [[nodiscard]] std::optional<std::string> query() const;

    // The last non-empty segment of the decoded path; "/" for the root path, "" for none.
    [[nodiscard]] std::string lastPathComponent() const;
    // The text after the last "." of `lastPathComponent`; "" when there is none or when the
    // only dot starts the name (".profile").
    [[nodiscard]] std::string pathExtension() const;

    [[nodiscard]] bool isFileUrl() const { return scheme_ && *scheme_ == "file"; }

    // The decoded query split at "&" and at the first "=" of each item.
    [[nodiscard]] std::optional<std::vector<UrlQueryItem>> queryItems() const;

    // Replaces the query. Names and values are escaped with the queryItem set and joined with
    // "=" and "&". Absent removes the query; an empty list leaves an empty query ("...?").
    void setQueryItems(const std::optional<std::vector<UrlQueryItem>>& items);

    friend bool operator==(const Url&, const Url&) = default;

private:
    std::optional<std::string> scheme_;
    std::optional<std::string> userInfo_;
    std::optional<std::string> host_;  // present whenever the URL has an authority
    std::optional<int> port_;
    std::string path_;
    std::optional<std::string> query_;
    std::optional<std::string> fragment_;
};

}  // namespace platform
