#include "Number.hpp"

#include <fmt/format.h>

#include <cmath>

namespace platform::view::internal {

void appendNumber(std::string& out, double value) {
    if (!std::isfinite(value)) value = 0;
    double rounded = std::round(value * 1000.0) / 1000.0;
    if (rounded == 0) rounded = 0;  // drops the sign of -0
    if (rounded == std::trunc(rounded) && std::fabs(rounded) < 1e15) {
        fmt::format_to(std::back_inserter(out), "{}", static_cast<long long>(rounded));
        return;
    }
    std::size_t start = out.size();
    fmt::format_to(std::back_inserter(out), "{:.3f}", rounded);
    while (out.size() > start && out.back() == '0') out.pop_back();
    if (out.size() > start && out.back() == '.') out.pop_back();
}

std::string number(double value) {
    std::string out;
    appendNumber(out, value);
    return out;
}

}  // namespace platform::view::internal
