#include "ElementText.hpp"

#include <limits>

#include "platform/Text.hpp"

namespace korvane::elements::internal {

namespace {
bool isAscii(std::string_view text) {
    for (unsigned char c : text) {
        if (c >= 0x80) {
            return false;
        }
    }
    return true;
}
}  // namespace

std::vector<std::string_view> characters(std::string_view text) {
    std::vector<std::string_view> result;
    if (isAscii(text)) {
        result.reserve(text.size());
        for (std::size_t i = 0; i < text.size(); ++i) {
            // CR LF is the one ASCII pair that forms a single character.
            std::size_t width = (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ? 2 : 1;
            result.push_back(text.substr(i, width));
            i += width - 1;
        }
        return result;
    }
    std::size_t offset = 0;
    for (const std::string& character : platform::characters(text)) {
        // The clusters are consecutive pieces of `text`, except where ill-formed bytes were
        // replaced; the remainder of the text then forms the last piece.
        if (text.substr(offset, character.size()) != character) {
            result.push_back(text.substr(offset));
            return result;
        }
        result.push_back(text.substr(offset, character.size()));
        offset += character.size();
    }
    return result;
}

std::size_t characterCount(std::string_view text) {
    if (isAscii(text)) {
        std::size_t count = text.size();
        for (std::size_t i = 0; i + 1 < text.size(); ++i) {
            if (text[i] == '\r' && text[i + 1] == '\n') {
                --count;
            }
        }
        return count;
    }
    return platform::characterCount(text);
}

std::string_view joinPrefix(const std::vector<std::string_view>& characters, std::size_t n) {
    n = std::min(n, characters.size());
    if (n == 0) {
        return {};
    }
    const char* begin = characters.front().data();
    const char* end = characters[n - 1].data() + characters[n - 1].size();
    return {begin, static_cast<std::size_t>(end - begin)};
}

std::optional<std::int64_t> parseInt64(std::string_view text) {
    bool negative = false;
    if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
        negative = text.front() == '-';
        text.remove_prefix(1);
    }
    if (text.empty()) {
        return std::nullopt;
    }
    // Accumulated as a negative number so that the minimum value fits.
    std::int64_t value = 0;
    constexpr std::int64_t minimum = std::numeric_limits<std::int64_t>::min();
    for (char c : text) {
        if (c < '0' || c > '9') {
            return std::nullopt;
        }
        int digit = c - '0';
        if (value < (minimum + digit) / 10) {
            return std::nullopt;
        }
        value = value * 10 - digit;
    }
    if (!negative) {
        if (value == minimum) {
            return std::nullopt;
        }
        value = -value;
    }
    return value;
}

}  // namespace korvane::elements::internal
