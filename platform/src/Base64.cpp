#include "platform/Base64.hpp"

#include <array>
#include <cstdint>

namespace platform {
namespace {

constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

constexpr std::array<std::int8_t, 256> makeReverse() {
    std::array<std::int8_t, 256> table{};
    table.fill(-1);
    for (std::size_t i = 0; i < kAlphabet.size(); ++i)
        table[static_cast<unsigned char>(kAlphabet[i])] = static_cast<std::int8_t>(i);
    return table;
}
constexpr auto kReverse = makeReverse();

}  // namespace

std::string base64Encode(std::string_view bytes) {
    std::string out;
    out.reserve((bytes.size() + 2) / 3 * 4);
    std::size_t i = 0;
    for (; i + 3 <= bytes.size(); i += 3) {
        const std::uint32_t n = (std::uint32_t(std::uint8_t(bytes[i])) << 16) |
                                (std::uint32_t(std::uint8_t(bytes[i + 1])) << 8) | std::uint8_t(bytes[i + 2]);
        out += kAlphabet[(n >> 18) & 63];
        out += kAlphabet[(n >> 12) & 63];
        out += kAlphabet[(n >> 6) & 63];
        out += kAlphabet[n & 63];
    }
    const std::size_t rest = bytes.size() - i;
    if (rest > 0) {
        std::uint32_t n = std::uint32_t(std::uint8_t(bytes[i])) << 16;
        if (rest == 2) n |= std::uint32_t(std::uint8_t(bytes[i + 1])) << 8;
        out += kAlphabet[(n >> 18) & 63];
        out += kAlphabet[(n >> 12) & 63];
        out += rest == 2 ? kAlphabet[(n >> 6) & 63] : '=';
        out += '=';
    }
    return out;
}

std::optional<std::string> base64Decode(std::string_view text) {
    if (text.size() % 4 != 0) return std::nullopt;
    std::size_t padding = 0;
    if (!text.empty() && text.back() == '=') padding = text[text.size() - 2] == '=' ? 2 : 1;
    std::string out;
    out.reserve(text.size() / 4 * 3);
    for (std::size_t i = 0; i < text.size(); i += 4) {
        const bool last = i + 4 == text.size();
        std::uint32_t n = 0;
        for (std::size_t k = 0; k < 4; ++k) {
            const char c = text[i + k];
            const bool isPad = last && k >= 4 - padding;
            if (isPad) {
                if (c != '=') return std::nullopt;
                n <<= 6;
                continue;
            }
            const std::int8_t v = kReverse[static_cast<unsigned char>(c)];
            if (v < 0) return std::nullopt;
            n = (n << 6) | std::uint32_t(v);
        }
        out += char((n >> 16) & 0xFF);
        if (!(last && padding == 2)) out += char((n >> 8) & 0xFF);
        if (!(last && padding >= 1)) out += char(n & 0xFF);
    }
    return out;
}

}  // namespace platform
