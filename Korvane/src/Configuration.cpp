#include "Korvane/Configuration.hpp"

#include <mutex>

namespace korvane {
namespace {

struct State {
    std::mutex mutex;
    std::string dateFormat = "yyyy-MM-dd'T'HH:mm:ss.SSSZZZZZ";
    StatusCodeRange range;
};

State& state() {
    static State instance;
    return instance;
}

}  // namespace

std::string Configuration::dateFormat() {
    std::lock_guard lock(state().mutex);
    return state().dateFormat;
}

void Configuration::setDateFormat(std::string format) {
    std::lock_guard lock(state().mutex);
    state().dateFormat = std::move(format);
}

StatusCodeRange Configuration::successfulStatusCodeRange() {
    std::lock_guard lock(state().mutex);
    return state().range;
}

void Configuration::setSuccessfulStatusCodeRange(StatusCodeRange range) {
    std::lock_guard lock(state().mutex);
    state().range = range;
}

}  // namespace korvane
