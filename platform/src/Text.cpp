#include "platform/Text.hpp"

#include <unicode/brkiter.h>
#include <unicode/uchar.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <cmath>
#include <memory>

#include "IcuSupport.hpp"

namespace platform {

namespace {

// The one decoding loop behind every UTF-8 function here, so that all of them agree on where
// U+FFFD stands. `visit(codePoint, byteStart, byteEnd)`; ill-formed input gives U+FFFD.
template <class Visit>
void forEachCodePoint(std::string_view utf8, Visit&& visit) {
    const auto* bytes = reinterpret_cast<const uint8_t*>(utf8.data());
    const auto length = static_cast<int32_t>(utf8.size());
    int32_t i = 0;
    while (i < length) {
        const int32_t start = i;
        UChar32 c;
        U8_NEXT(bytes, i, length, c);
        if (c < 0) c = 0xFFFD;
        visit(c, static_cast<std::size_t>(start), static_cast<std::size_t>(i));
    }
}

// Creating a break iterator costs far more than using one, so each thread keeps its own.
icu::BreakIterator* characterIterator() {
    thread_local std::unique_ptr<icu::BreakIterator> iterator = [] {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<icu::BreakIterator> made(
            icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
        if (U_FAILURE(status)) made.reset();
        return made;
    }();
    return iterator.get();
}

// Boundaries of user-perceived characters in `text`, starting with 0 and ending with its
// length. Without break data (which a normal ICU install has) code points stand in.
std::vector<std::size_t> characterBoundaries(std::u16string_view text) {
    std::vector<std::size_t> bounds{0};
    if (text.empty()) return bounds;
    icu::BreakIterator* it = characterIterator();
    if (it == nullptr) {
        for (std::size_t i = 0; i < text.size();) {
            i += (U16_IS_LEAD(text[i]) && i + 1 < text.size() && U16_IS_TRAIL(text[i + 1])) ? 2 : 1;
            bounds.push_back(i);
        }
        return bounds;
    }
    // The iterator keeps a pointer into `source`, which outlives every use of it below.
    const icu::UnicodeString source(false, text.data(), static_cast<int32_t>(text.size()));
    it->setText(source);
    for (int32_t b = it->next(); b != icu::BreakIterator::DONE; b = it->next()) {
        bounds.push_back(static_cast<std::size_t>(b));
    }
    // Leave no dangling pointer behind in the per-thread iterator.
    it->setText(icu::UnicodeString());
    return bounds;
}

std::optional<UChar32> firstCodePoint(std::string_view character, bool* single) {
    std::optional<UChar32> first;
    int count = 0;
    forEachCodePoint(character, [&](UChar32 c, std::size_t, std::size_t) {
        if (count++ == 0) first = c;
    });
    if (single != nullptr) *single = count == 1;
    return first;
}

}  // namespace

std::u16string utf8ToUtf16(std::string_view utf8) {
    std::u16string out;
    out.reserve(utf8.size());
    forEachCodePoint(utf8, [&](UChar32 c, std::size_t, std::size_t) {
        if (c > 0xFFFF) {
            out.push_back(static_cast<char16_t>(U16_LEAD(c)));
            out.push_back(static_cast<char16_t>(U16_TRAIL(c)));
        } else {
            out.push_back(static_cast<char16_t>(c));
        }
    });
    return out;
}

std::string utf16ToUtf8(std::u16string_view utf16) {
    std::string out;
    out.reserve(utf16.size());
    const auto length = static_cast<int32_t>(utf16.size());
    int32_t i = 0;
    while (i < length) {
        UChar32 c;
        U16_NEXT(utf16.data(), i, length, c);
        if (U_IS_SURROGATE(c)) c = 0xFFFD;
        uint8_t buffer[4];
        int32_t n = 0;
        U8_APPEND_UNSAFE(buffer, n, c);
        out.append(reinterpret_cast<const char*>(buffer), static_cast<std::size_t>(n));
    }
    return out;
}

std::size_t utf16Length(std::string_view utf8) {
    std::size_t units = 0;
    forEachCodePoint(utf8, [&](UChar32 c, std::size_t, std::size_t) { units += c > 0xFFFF ? 2 : 1; });
    return units;
}

std::size_t characterCount(std::u16string_view utf16) {
    return characterBoundaries(utf16).size() - 1;
}

std::size_t characterCount(std::string_view utf8) {
    return characterCount(utf8ToUtf16(utf8));
}

std::vector<std::string> characters(std::string_view utf8) {
    const std::u16string utf16 = utf8ToUtf16(utf8);
    const std::vector<std::size_t> bounds = characterBoundaries(utf16);
    std::vector<std::string> out;
    out.reserve(bounds.size() - 1);
    for (std::size_t i = 1; i < bounds.size(); ++i) {
        out.push_back(utf16ToUtf8(std::u16string_view(utf16).substr(bounds[i - 1], bounds[i] - bounds[i - 1])));
    }
    return out;
}

std::optional<std::size_t> utf8Offset(std::string_view utf8, std::size_t utf16Index) {
    if (utf16Index == 0) return 0;
    std::size_t units = 0;
    std::optional<std::size_t> found;
    forEachCodePoint(utf8, [&](UChar32 c, std::size_t, std::size_t end) {
        if (found || units >= utf16Index) return;
        units += c > 0xFFFF ? 2 : 1;
        if (units == utf16Index) found = end;
    });
    return found;
}

std::optional<std::size_t> utf16Offset(std::string_view utf8, std::size_t byteIndex) {
    if (byteIndex == 0) return 0;
    std::size_t units = 0;
    std::optional<std::size_t> found;
    forEachCodePoint(utf8, [&](UChar32 c, std::size_t, std::size_t end) {
        if (found || end > byteIndex) return;
        units += c > 0xFFFF ? 2 : 1;
        if (end == byteIndex) found = units;
    });
    return found;
}

std::size_t utf8SequenceLength(std::string_view utf8, std::size_t at) {
    const auto lead = static_cast<unsigned char>(utf8[at]);
    if (lead < 0x80) return 1;
    std::size_t extra = 0;
    std::uint32_t codePoint = 0;
    if ((lead & 0xE0) == 0xC0) {
        extra = 1;
        codePoint = lead & 0x1F;
    } else if ((lead & 0xF0) == 0xE0) {
        extra = 2;
        codePoint = lead & 0x0F;
    } else if ((lead & 0xF8) == 0xF0) {
        extra = 3;
        codePoint = lead & 0x07;
    } else {
        return 0;
    }
    if (at + extra >= utf8.size()) return 0;
    for (std::size_t k = 1; k <= extra; ++k) {
        const auto next = static_cast<unsigned char>(utf8[at + k]);
        if ((next & 0xC0) != 0x80) return 0;
        codePoint = (codePoint << 6) | (next & 0x3F);
    }
    constexpr std::uint32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
    if (codePoint < kSmallest[extra] || codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint <= 0xDFFF)) {
        return 0;
    }
    return extra + 1;
}

bool isValidUtf8(std::string_view utf8) {
    for (std::size_t at = 0; at < utf8.size();) {
        const std::size_t length = utf8SequenceLength(utf8, at);
        if (length == 0) return false;
        at += length;
    }
    return true;
}

bool isNumber(std::string_view character) {
    const std::optional<UChar32> c = firstCodePoint(character, nullptr);
    return c && u_getIntPropertyValue(*c, UCHAR_NUMERIC_TYPE) != U_NT_NONE;
}

std::optional<std::int64_t> wholeNumberValue(std::string_view character) {
    bool single = false;
    const std::optional<UChar32> c = firstCodePoint(character, &single);
    if (!c || !single) return std::nullopt;
    const double value = u_getNumericValue(*c);
    if (value == U_NO_NUMERIC_VALUE || value != std::floor(value) || std::fabs(value) > 9.0e18) return std::nullopt;
    return static_cast<std::int64_t>(value);
}

}  // namespace platform
