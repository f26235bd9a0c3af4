#include "HttpAuthChallenge.hpp"

#include <string_view>
#include <vector>

namespace platform::http_internal {

namespace {

bool isSpace(char c) {
    return c == ' ' || c == '\t';
}

struct Scanner {
    std::string_view text;
    std::size_t pos = 0;

    void skipSpace() {
        while (pos < text.size() && isSpace(text[pos])) ++pos;
    }
    [[nodiscard]] bool atEnd() const { return pos >= text.size(); }
    [[nodiscard]] char peek() const { return atEnd() ? '\0' : text[pos]; }

    std::string_view token() {
        const auto start = pos;
        while (pos < text.size() && !isSpace(text[pos]) && text[pos] != '=' && text[pos] != ',') ++pos;
        return text.substr(start, pos - start);
    }

    std::string value() {
        skipSpace();
        std::string out;
        if (peek() != '"') {
            const auto start = pos;
            while (pos < text.size() && text[pos] != ',' && !isSpace(text[pos])) ++pos;
            return std::string(text.substr(start, pos - start));
        }
        ++pos;
        while (pos < text.size() && text[pos] != '"') {
            if (text[pos] == '\\' && pos + 1 < text.size()) ++pos;
            out += text[pos++];
        }
        if (pos < text.size()) ++pos;  // closing quote
        return out;
    }
};

// Every (scheme, realm) found in one field value; a field may hold several challenges.
void collect(std::string_view field, std::vector<std::pair<std::string, std::string>>& out) {
    Scanner s{field};
    while (true) {
        s.skipSpace();
        while (s.peek() == ',') {
            ++s.pos;
            s.skipSpace();
        }
        if (s.atEnd()) return;
        const auto name = s.token();
        s.skipSpace();
        if (s.peek() == '=') {
            // An auth-param of the current challenge (or token68 padding).
            while (s.peek() == '=') ++s.pos;
            auto value = s.value();
            if (!out.empty() && equalsIgnoringCase(name, "realm")) out.back().second = std::move(value);
        } else if (!name.empty()) {
            out.emplace_back(std::string(name), std::string());
        } else {
            ++s.pos;  // stray character: step over it rather than loop
        }
    }
}

}  // namespace

std::optional<ParsedChallenge> selectChallenge(const HttpHeaders& headers) {
    std::vector<std::pair<std::string, std::string>> challenges;
    for (const auto& value : headers.getAll("WWW-Authenticate")) collect(value, challenges);
    std::optional<ParsedChallenge> basic;
    for (const auto& [scheme, realm] : challenges) {
        if (equalsIgnoringCase(scheme, "Digest")) return ParsedChallenge{HttpAuthScheme::digest, realm};
        if (!basic && equalsIgnoringCase(scheme, "Basic")) basic = ParsedChallenge{HttpAuthScheme::basic, realm};
    }
    return basic;
}

}  // namespace platform::http_internal
