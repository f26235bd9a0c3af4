#include "platform/Url.hpp"

#include <array>
#include <charconv>
#include <cstdint>

#include "platform/Text.hpp"

namespace platform {
namespace {

constexpr std::uint8_t kUser = 1 << 0;
constexpr std::uint8_t kPassword = 1 << 1;
constexpr std::uint8_t kHost = 1 << 2;
constexpr std::uint8_t kPath = 1 << 3;
constexpr std::uint8_t kQuery = 1 << 4;
constexpr std::uint8_t kQueryItem = 1 << 5;
constexpr std::uint8_t kFragment = 1 << 6;

constexpr std::array<std::uint8_t, 128> buildTable() {
    std::array<std::uint8_t, 128> table{};
    auto add = [&table](std::string_view chars, std::uint8_t bits) {
        for (char c : chars) table[static_cast<unsigned char>(c)] |= bits;
    };
    constexpr std::string_view alnum = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
    constexpr std::uint8_t all = kUser | kPassword | kHost | kPath | kQuery | kQueryItem | kFragment;
    add(alnum, all);
    add("-._~!$'()*+,", all);
    add("&=", kUser | kPassword | kHost | kPath | kQuery | kFragment);
    add(";", kUser | kPassword | kHost | kQuery | kQueryItem | kFragment);
    add("/:@", kPath | kQuery | kQueryItem | kFragment);
    add("?", kQuery | kQueryItem | kFragment);
    add("[]:", kHost);
    return table;
}

constexpr auto kTable = buildTable();

std::uint8_t bitFor(UrlCharacterSet set) {
    switch (set) {
        case UrlCharacterSet::user:
            return kUser;
        case UrlCharacterSet::password:
            return kPassword;
        case UrlCharacterSet::host:
            return kHost;
        case UrlCharacterSet::path:
            return kPath;
        case UrlCharacterSet::query:
            return kQuery;
        case UrlCharacterSet::queryItem:
            return kQueryItem;
        case UrlCharacterSet::fragment:
            return kFragment;
    }
    return 0;
}

int hexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// True when every character is allowed or part of a well-formed escape.
bool validComponent(std::string_view text, UrlCharacterSet set) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        char c = text[i];
        if (c == '%') {
            if (i + 2 >= text.size()) return false;
            if (hexValue(text[i + 1]) < 0 || hexValue(text[i + 2]) < 0) return false;
            i += 2;
        } else if (!isUrlAllowed(c, set)) {
            return false;
        }
    }
    return true;
}

bool validScheme(std::string_view s) {
    if (s.empty() || !((s[0] >= 'a' && s[0] <= 'z') || (s[0] >= 'A' && s[0] <= 'Z'))) return false;
    for (char c : s) {
        bool ok = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '+' || c == '-' ||
                  c == '.';
        if (!ok) return false;
    }
    return true;
}

}  // namespace

bool isUrlAllowed(char c, UrlCharacterSet set) {
    auto u = static_cast<unsigned char>(c);
    return u < 128 && (kTable[u] & bitFor(set)) != 0;
}

std::string percentEncode(std::string_view text, UrlCharacterSet allowed) {
    static constexpr char hex[] = "0123456789ABCDEF";
    std::string out;
    out.reserve(text.size());
    for (char c : text) {
        if (isUrlAllowed(c, allowed)) {
            out.push_back(c);
        } else {
            auto u = static_cast<unsigned char>(c);
            out.push_back('%');
            out.push_back(hex[u >> 4]);
            out.push_back(hex[u & 0x0F]);
        }
    }
    return out;
}

std::optional<std::string> percentDecode(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            out.push_back(text[i]);
            continue;
        }
        if (i + 2 >= text.size()) return std::nullopt;
        int hi = hexValue(text[i + 1]);
        int lo = hexValue(text[i + 2]);
        if (hi < 0 || lo < 0) return std::nullopt;
        out.push_back(static_cast<char>(hi * 16 + lo));
        i += 2;
    }
    if (!isValidUtf8(out)) return std::nullopt;
    return out;
}

std::optional<Url> Url::parse(std::string_view text) {
    Url url;
    std::string_view rest = text;

    // A scheme is present when a ":" comes before any of "/?#" and what precedes it is a
    // valid scheme name; otherwise the text is a relative reference.
    auto colon = rest.find(':');
    auto firstDelimiter = rest.find_first_of("/?#");
    if (colon != std::string_view::npos && (firstDelimiter == std::string_view::npos || colon < firstDelimiter)) {
        auto scheme = rest.substr(0, colon);
        if (!validScheme(scheme)) return std::nullopt;
        url.scheme_ = std::string(scheme);
        rest.remove_prefix(colon + 1);
    }

    if (auto hash = rest.find('#'); hash != std::string_view::npos) {
        auto fragment = rest.substr(hash + 1);
        if (!validComponent(fragment, UrlCharacterSet::fragment)) return std::nullopt;
        url.fragment_ = std::string(fragment);
        rest = rest.substr(0, hash);
    }
    if (auto question = rest.find('?'); question != std::string_view::npos) {
        auto query = rest.substr(question + 1);
        if (!validComponent(query, UrlCharacterSet::query)) return std::nullopt;
        url.query_ = std::string(query);
        rest = rest.substr(0, question);
    }

    if (rest.starts_with("//")) {
        rest.remove_prefix(2);
        auto slash = rest.find('/');
        auto authority = rest.substr(0, slash);
        rest = slash == std::string_view::npos ? std::string_view{} : rest.substr(slash);
        if (auto at = authority.rfind('@'); at != std::string_view::npos) {
            auto userInfo = authority.substr(0, at);
            auto userColon = userInfo.find(':');
            if (!validComponent(userInfo.substr(0, userColon), UrlCharacterSet::user)) return std::nullopt;
            if (userColon != std::string_view::npos &&
                !validComponent(userInfo.substr(userColon + 1), UrlCharacterSet::password)) {
                return std::nullopt;
            }
            url.userInfo_ = std::string(userInfo);
            authority.remove_prefix(at + 1);
        }
        // A bracketed IPv6 host must close its bracket and may be followed only by a port; a
        // bracket or a colon anywhere else in the host is refused, as the transport would
        // read such a host differently.
        std::string_view portText;
        bool hasPort = false;
        if (authority.starts_with('[')) {
            const auto close = authority.find(']');
            if (close == std::string_view::npos) return std::nullopt;
            const auto inside = authority.substr(1, close - 1);
            if (inside.empty() || inside.find_first_not_of("0123456789abcdefABCDEF:.") != std::string_view::npos) {
                return std::nullopt;
            }
            const auto after = authority.substr(close + 1);
            if (!after.empty() && after.front() != ':') return std::nullopt;
            hasPort = !after.empty();
            if (hasPort) portText = after.substr(1);
            authority = authority.substr(0, close + 1);
        } else {
            const auto portColon = authority.find(':');
            hasPort = portColon != std::string_view::npos;
            if (hasPort) {
                portText = authority.substr(portColon + 1);
                authority = authority.substr(0, portColon);
            }
            if (authority.find_first_of("[]") != std::string_view::npos) return std::nullopt;
        }
        if (hasPort && !portText.empty()) {
            int port = 0;
            auto [end, ec] = std::from_chars(portText.data(), portText.data() + portText.size(), port);
            if (ec != std::errc{} || end != portText.data() + portText.size() || port < 0 || port > 65535) {
                return std::nullopt;
            }
            url.port_ = port;
        }
        if (!validComponent(authority, UrlCharacterSet::host)) return std::nullopt;
        url.host_ = std::string(authority);
    }

    if (!validComponent(rest, UrlCharacterSet::path)) return std::nullopt;
    url.path_ = std::string(rest);
    return url;
}

Url Url::fileUrl(const std::filesystem::path& path) {
    Url url;
    url.scheme_ = "file";
    url.host_ = "";
    url.path_ = percentEncode(path.generic_string(), UrlCharacterSet::path);
    return url;
}

std::string Url::string() const {
    std::string out;
    if (scheme_) out += *scheme_ + ":";
    if (host_) {
        out += "//";
        if (userInfo_) out += *userInfo_ + "@";
        out += *host_;
        if (port_) out += ":" + std::to_string(*port_);
    }
    out += path_;
    if (query_) out += "?" + *query_;
    if (fragment_) out += "#" + *fragment_;
    return out;
}

std::string Url::path() const {
    return percentDecode(path_).value_or(path_);
}

std::optional<std::string> Url::query() const {
    if (!query_) return std::nullopt;
    return percentDecode(*query_).value_or(*query_);
}

std::string Url::lastPathComponent() const {
    std::string decoded = path();
    while (decoded.size() > 1 && decoded.back() == '/') decoded.pop_back();
    if (decoded == "/") return decoded;
    auto slash = decoded.rfind('/');
    return slash == std::string::npos ? decoded : decoded.substr(slash + 1);
}

std::string Url::pathExtension() const {
    std::string name = lastPathComponent();
    auto dot = name.rfind('.');
    if (dot == std::string::npos || dot == 0 || dot + 1 == name.size()) return "";
    return name.substr(dot + 1);
}

std::optional<std::vector<UrlQueryItem>> Url::queryItems() const {
    if (!query_) return std::nullopt;
    std::vector<UrlQueryItem> items;
    if (query_->empty()) return items;
    std::string_view rest = *query_;
    auto decode = [](std::string_view s) { return percentDecode(s).value_or(std::string(s)); };
    while (true) {
        auto amp = rest.find('&');
        auto item = rest.substr(0, amp);
        auto eq = item.find('=');
        if (eq == std::string_view::npos) {
            items.push_back({decode(item), std::nullopt});
        } else {
            items.push_back({decode(item.substr(0, eq)), decode(item.substr(eq + 1))});
        }
        if (amp == std::string_view::npos) break;
        rest.remove_prefix(amp + 1);
    }
    return items;
}

void Url::setQueryItems(const std::optional<std::vector<UrlQueryItem>>& items) {
    if (!items) {
        query_.reset();
        return;
    }
    std::string query;
    for (const auto& item : *items) {
        if (!query.empty() || &item != &items->front()) query += '&';
        query += percentEncode(item.name, UrlCharacterSet::queryItem);
        if (item.value) {
            query += '=';
            query += percentEncode(*item.value, UrlCharacterSet::queryItem);
        }
    }
    query_ = std::move(query);
}

}  // namespace platform
