#include "Korvane/CodableHelper.hpp"

#include <mutex>

namespace korvane {
namespace {

struct State {
    std::mutex mutex;
    std::shared_ptr<const OpenISO8601DateFormatter> formatterOverride;
    std::shared_ptr<const OpenISO8601DateFormatter> formatterDefault;
    std::shared_ptr<const JSONDecoder> decoderOverride;
    std::shared_ptr<const JSONDecoder> decoderDefault;
    std::shared_ptr<const JSONEncoder> encoderOverride;
    std::shared_ptr<const JSONEncoder> encoderDefault;

    // REQUIRES: mutex held.
    std::shared_ptr<const OpenISO8601DateFormatter> currentFormatter() {
        if (formatterOverride) return formatterOverride;
        if (!formatterDefault) formatterDefault = std::make_shared<const OpenISO8601DateFormatter>();
        return formatterDefault;
    }
};

State& state() {
    static State instance;
    return instance;
}

}  // namespace

std::function<std::string(Date)> CodableHelper::formatted(std::shared_ptr<const OpenISO8601DateFormatter> formatter) {
    return [formatter = std::move(formatter)](Date date) { return formatter->string(date); };
}

std::function<std::optional<Date>(std::string_view)> CodableHelper::parsed(
    std::shared_ptr<const OpenISO8601DateFormatter> formatter) {
    return [formatter = std::move(formatter)](std::string_view text) { return formatter->date(text); };
}

std::shared_ptr<const OpenISO8601DateFormatter> CodableHelper::dateFormatter() {
    std::lock_guard lock(state().mutex);
    return state().currentFormatter();
}

void CodableHelper::setDateFormatter(std::shared_ptr<const OpenISO8601DateFormatter> formatter) {
    std::lock_guard lock(state().mutex);
    state().formatterOverride = std::move(formatter);
}

std::shared_ptr<const JSONDecoder> CodableHelper::jsonDecoder() {
    std::lock_guard lock(state().mutex);
    auto& s = state();
    if (s.decoderOverride) return s.decoderOverride;
    if (!s.decoderDefault) {
        auto decoder = std::make_shared<JSONDecoder>();
        decoder->dateDecodingStrategy = parsed(s.currentFormatter());
        s.decoderDefault = std::move(decoder);
    }
    return s.decoderDefault;
}

void CodableHelper::setJsonDecoder(std::shared_ptr<const JSONDecoder> decoder) {
    std::lock_guard lock(state().mutex);
    state().decoderOverride = std::move(decoder);
}

std::shared_ptr<const JSONEncoder> CodableHelper::jsonEncoder() {
    std::lock_guard lock(state().mutex);
    auto& s = state();
    if (s.encoderOverride) return s.encoderOverride;
    if (!s.encoderDefault) {
        auto encoder = std::make_shared<JSONEncoder>();
        encoder->outputFormatting = JSONEncoder::OutputFormatting::prettyPrinted;
        encoder->dateEncodingStrategy = formatted(s.currentFormatter());
        s.encoderDefault = std::move(encoder);
    }
    return s.encoderDefault;
}

void CodableHelper::setJsonEncoder(std::shared_ptr<const JSONEncoder> encoder) {
    std::lock_guard lock(state().mutex);
    state().encoderOverride = std::move(encoder);
}

void CodableHelper::resetForTesting() {
    std::lock_guard lock(state().mutex);
    auto& s = state();
    s.formatterOverride.reset();
    s.formatterDefault.reset();
    s.decoderOverride.reset();
    s.decoderDefault.reset();
    s.encoderOverride.reset();
    s.encoderDefault.reset();
}

}  // namespace korvane
