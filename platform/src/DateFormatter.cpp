#include "platform/DateFormatter.hpp"

#include <unicode/dtfmtsym.h>
#include <unicode/gregocal.h>
#include <unicode/smpdtfmt.h>

#include <mutex>

#include "IcuSupport.hpp"
#include "platform/Locale.hpp"

namespace platform {

namespace {

bool isAsciiLetter(char16_t c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

// ICU formats an unknown letter as nothing and an unterminated quote as literal text; both are
// almost always a typo in the pattern, so they are refused up front.
std::optional<std::string> patternProblem(const icu::UnicodeString& pattern) {
    const char16_t* letters = icu::DateFormatSymbols::getPatternUChars();
    const std::u16string_view known(letters, std::char_traits<char16_t>::length(letters));
    bool quoted = false;
    for (int32_t i = 0; i < pattern.length(); ++i) {
        const char16_t c = pattern.charAt(i);
        if (c == u'\'') {
            // Two quotes in a row are a literal quote, inside or outside quoted text.
            if (i + 1 < pattern.length() && pattern.charAt(i + 1) == u'\'') {
                ++i;
            } else {
                quoted = !quoted;
            }
            continue;
        }
        if (quoted || !isAsciiLetter(c)) continue;
        if (known.find(c) == std::u16string_view::npos) {
            return "unknown pattern letter '" + std::string(1, static_cast<char>(c)) + "' at offset " +
                   std::to_string(i);
        }
    }
    if (quoted) return "unterminated quote";
    return std::nullopt;
}

std::unique_ptr<icu::Calendar> makeCalendar(CalendarKind kind, const icu::TimeZone& zone, const icu::Locale& locale,
                                            UErrorCode& status) {
    if (kind == CalendarKind::localeDefault) {
        return std::unique_ptr<icu::Calendar>(icu::Calendar::createInstance(zone, locale, status));
    }
    auto calendar = std::make_unique<icu::GregorianCalendar>(zone, locale, status);
    if (kind == CalendarKind::iso8601) {
        calendar->setFirstDayOfWeek(UCAL_MONDAY);
        calendar->setMinimalDaysInFirstWeek(4);
    }
    return calendar;
}

// ICU reads fraction-of-second digits into a 32-bit integer and scales them by a 32-bit power
// of ten, one factor per digit past the third. Both overflow as the run grows: ten to 34
// digits give a wrong fraction (the overflow is undefined behaviour), and from 35 digits the
// power wraps to zero and the division kills the process. Nine digits are nanoseconds, the
// finest precision any server sends, and stay well inside 32 bits, so a longer run of digits
// (in any script ICU reads as digits) is refused before ICU sees it.
constexpr int32_t kMaxDigitRun = 9;

bool hasOverlongDigitRun(const icu::UnicodeString& text) {
    int32_t run = 0;
    for (int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1)) {
        run = u_isdigit(text.char32At(i)) ? run + 1 : 0;
        if (run > kMaxDigitRun) return true;
    }
    return false;
}

}  // namespace

struct DateFormatter::Impl {
    mutable std::mutex mutex;
    std::string locale;
    std::string timeZone;
    std::unique_ptr<icu::SimpleDateFormat> format;
    // Whether the pattern has a fraction-of-second field; others read long digit runs safely
    // ("yyyyMMddHHmmss").
    bool readsFractions = false;
};

std::expected<DateFormatter, DateFormatterError> DateFormatter::make(std::string_view pattern,
                                                                     const DateFormatterOptions& options) {
    using Code = DateFormatterError::Code;
    const icu::UnicodeString icuPattern = internal::toIcu(pattern);
    if (auto problem = patternProblem(icuPattern)) {
        return std::unexpected(DateFormatterError{Code::invalidPattern, *problem});
    }

    auto impl = std::make_unique<Impl>();
    impl->locale = options.locale.value_or(currentLocale());
    impl->timeZone = options.timeZone.value_or(currentTimeZone());
    std::unique_ptr<icu::TimeZone> zone = internal::makeTimeZone(impl->timeZone);
    if (!zone) {
        return std::unexpected(
            DateFormatterError{Code::unknownTimeZone, "unknown time zone \"" + impl->timeZone + "\""});
    }

    const icu::Locale icuLocale = internal::makeLocale(impl->locale);
    UErrorCode status = U_ZERO_ERROR;
    auto format = std::make_unique<icu::SimpleDateFormat>(icuPattern, icuLocale, status);
    std::unique_ptr<icu::Calendar> calendar = makeCalendar(options.calendar, *zone, icuLocale, status);
    if (U_FAILURE(status) || !calendar) {
        return std::unexpected(DateFormatterError{Code::unavailable, u_errorName(status)});
    }
    format->adoptCalendar(calendar.release());
    // After the calendar: leniency is also a property of the calendar.
    format->setLenient(options.lenient);
    impl->format = std::move(format);
    impl->readsFractions = icuPattern.indexOf(u'S') >= 0;
    return DateFormatter(std::move(impl));
}

DateFormatter::DateFormatter(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}
DateFormatter::~DateFormatter() = default;

DateFormatter::DateFormatter(const DateFormatter& other) : impl_(std::make_unique<Impl>()) {
    std::lock_guard lock(other.impl_->mutex);
    impl_->locale = other.impl_->locale;
    impl_->timeZone = other.impl_->timeZone;
    impl_->format.reset(other.impl_->format->clone());
    impl_->readsFractions = other.impl_->readsFractions;
}

DateFormatter& DateFormatter::operator=(const DateFormatter& other) {
    if (this != &other) *this = DateFormatter(other);
    return *this;
}

DateFormatter::DateFormatter(DateFormatter&& other) noexcept = default;
DateFormatter& DateFormatter::operator=(DateFormatter&& other) noexcept = default;

std::string DateFormatter::pattern() const {
    std::lock_guard lock(impl_->mutex);
    icu::UnicodeString text;
    impl_->format->toPattern(text);
    return internal::toUtf8(text);
}

std::string DateFormatter::locale() const {
    std::lock_guard lock(impl_->mutex);
    return impl_->locale;
}

std::string DateFormatter::timeZone() const {
    std::lock_guard lock(impl_->mutex);
    return impl_->timeZone;
}

bool DateFormatter::setTimeZone(std::string_view timeZoneId) {
    std::unique_ptr<icu::TimeZone> zone = internal::makeTimeZone(timeZoneId);
    if (!zone) return false;
    std::lock_guard lock(impl_->mutex);
    impl_->format->adoptTimeZone(zone.release());
    impl_->timeZone = std::string(timeZoneId);
    return true;
}

bool DateFormatter::isLenient() const {
    std::lock_guard lock(impl_->mutex);
    return impl_->format->isLenient();
}

void DateFormatter::setLenient(bool lenient) {
    std::lock_guard lock(impl_->mutex);
    impl_->format->setLenient(lenient);
}

std::string DateFormatter::format(TimePoint date) const {
    std::lock_guard lock(impl_->mutex);
    icu::UnicodeString text;
    impl_->format->format(internal::toUDate(date), text);
    return internal::toUtf8(text);
}

std::optional<DateFormatter::TimePoint> DateFormatter::parse(std::string_view text) const {
    const icu::UnicodeString source = internal::toIcu(text);
    std::lock_guard lock(impl_->mutex);
    if (impl_->readsFractions && hasOverlongDigitRun(source)) return std::nullopt;
    icu::ParsePosition position(0);
    const UDate date = impl_->format->parse(source, position);
    // ICU stops quietly before trailing text; the phone refuses it.
    if (position.getErrorIndex() >= 0 || position.getIndex() != source.length()) return std::nullopt;
    return internal::fromUDate(date);
}

}  // namespace platform
