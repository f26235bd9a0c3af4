#include "platform/view/Color.hpp"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <cstdint>
#include <limits>

namespace platform::view {

namespace {

// Letters, marks and numbers: the phone's "alphanumerics" set.
bool isAlphanumeric(UChar32 c) {
    if (c < 0) return false;  // ill-formed UTF-8 counts as a symbol
    return (U_GET_GC_MASK(c) & (U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK)) != 0;
}

std::string_view trimNonAlphanumerics(std::string_view text) {
    const auto* s = reinterpret_cast<const std::uint8_t*>(text.data());
    auto length = static_cast<int32_t>(text.size());
    int32_t begin = 0;
    while (begin < length) {
        int32_t next = begin;
        UChar32 c;
        U8_NEXT(s, next, length, c);
        if (isAlphanumeric(c)) break;
        begin = next;
    }
    int32_t end = length;
    while (end > begin) {
        int32_t previous = end;
        UChar32 c;
        U8_PREV(s, begin, previous, c);
        if (isAlphanumeric(c)) break;
        end = previous;
    }
    return text.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin));
}

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// Scans like the phone's hexadecimal scanner: optional "0x", then digits until the first
// non-digit. Overflow saturates to all ones. Nothing scanned is 0.
std::uint64_t scanHex(std::string_view text) {
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X') && hexDigit(text[2]) >= 0) {
        text.remove_prefix(2);
    }
    std::uint64_t value = 0;
    bool overflow = false;
    for (char c : text) {
        int digit = hexDigit(c);
        if (digit < 0) break;
        if (value > (std::numeric_limits<std::uint64_t>::max() >> 4)) overflow = true;
        value = (value << 4) | static_cast<std::uint64_t>(digit);
    }
    return overflow ? std::numeric_limits<std::uint64_t>::max() : value;
}

}  // namespace

Color Color::hex(std::string_view text, double opacity) {
    std::string_view digits = trimNonAlphanumerics(text);
    if (!digits.empty() && digits.front() == '#') digits.remove_prefix(1);
    std::uint64_t value = scanHex(digits);
    return {static_cast<double>((value >> 16) & 0xFF) / 255.0, static_cast<double>((value >> 8) & 0xFF) / 255.0,
            static_cast<double>(value & 0xFF) / 255.0, opacity};
}

}  // namespace platform::view
