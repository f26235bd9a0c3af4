#include "TextFieldGraphemes.hpp"

#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <memory>


namespace platform::internal {

namespace {

// One character iterator per thread: creating one costs far more than a keystroke.
icu::BreakIterator* characterIterator() {
    thread_local std::unique_ptr<icu::BreakIterator> iterator = [] {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<icu::BreakIterator> it(icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
        if (U_FAILURE(status)) {
            it.reset();
        }
        return it;
    }();
    return iterator.get();
}

}  // namespace

std::size_t previousGraphemeBoundary(std::u16string_view text, std::size_t position) {
    if (position == 0 || text.empty()) {
        return 0;
    }
    if (position > text.size()) {
        position = text.size();
    }
    icu::BreakIterator* it = characterIterator();
    // The iterator keeps a pointer to its text: `source` outlives every use below.
    icu::UnicodeString source(false, text.data(), static_cast<int32_t>(text.size()));
    if (it == nullptr) {
        // Without ICU data, fall back to code points.
        std::size_t p = position - 1;
        if (p > 0 && (text[p] & 0xFC00) == 0xDC00 && (text[p - 1] & 0xFC00) == 0xD800) {
            --p;
        }
        return p;
    }
    it->setText(source);
    int32_t boundary = it->preceding(static_cast<int32_t>(position));
    return boundary == icu::BreakIterator::DONE ? 0 : static_cast<std::size_t>(boundary);
}

}  // namespace platform::internal
