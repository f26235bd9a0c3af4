// Texts of dynamic values, as the phone prints them with string interpolation and in
// collections (elements and keys in their debug form).

#include <charconv>
#include <cmath>
#include <cstdio>
#include <string>
#include <type_traits>

#include "AnyCodable/Value.hpp"

namespace anycodable {
namespace {

// The phone prints a floating value in positional notation unless its magnitude exceeds
// 2^(significand bits) or its decimal exponent is below -4, and always with a fraction.
template <class T>
std::string floatingText(T value, T exponentialAbove) {
    if (std::isnan(value)) return "nan";
    if (std::isinf(value)) return value < 0 ? "-inf" : "inf";
    char buffer[64];
    auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific);
    std::string sci(buffer, ec == std::errc{} ? end : buffer);
    std::string sign;
    if (!sci.empty() && sci[0] == '-') {
        sign = "-";
        sci.erase(0, 1);
    }
    auto e = sci.find('e');
    std::string digits = sci.substr(0, e);
    int exponent = std::stoi(sci.substr(e + 1));
    if (auto dot = digits.find('.'); dot != std::string::npos) digits.erase(dot, 1);

    if (exponent < -4 || std::fabs(value) > exponentialAbove) {
        std::string mantissa = digits.substr(0, 1);
        if (digits.size() > 1) mantissa += "." + digits.substr(1);
        char exp[16];
        std::snprintf(exp, sizeof exp, "e%c%02d", exponent < 0 ? '-' : '+', std::abs(exponent));
        return sign + mantissa + exp;
    }
    if (exponent < 0) return sign + "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + digits;
    auto integerDigits = static_cast<std::size_t>(exponent) + 1;
    if (digits.size() <= integerDigits) {
        return sign + digits + std::string(integerDigits - digits.size(), '0') + ".0";
    }
    return sign + digits.substr(0, integerDigits) + "." + digits.substr(integerDigits);
}

std::string quoted(const std::string& text) {
    std::string out = "\"";
    for (char c : text) {
        auto u = static_cast<unsigned char>(c);
        switch (c) {
            case '"':
                out += "\\\"";
                break;
            case '\\':
                out += "\\\\";
                break;
            case '\n':
                out += "\\n";
                break;
            case '\r':
                out += "\\r";
                break;
            case '\t':
                out += "\\t";
                break;
            case '\0':
                out += "\\0";
                break;
            default:
                if (u < 0x20 || u == 0x7F) {
                    char escape[16];
                    std::snprintf(escape, sizeof escape, "\\u{%X}", u);
                    out += escape;
                } else {
                    out += c;
                }
        }
    }
    return out + "\"";
}

std::string dateText(Date date) {
    using namespace std::chrono;
    auto seconds = floor<std::chrono::seconds>(date);
    auto day = floor<days>(seconds);
    year_month_day ymd{day};
    hh_mm_ss<std::chrono::seconds> time{seconds - day};
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%04d-%02u-%02u %02d:%02d:%02d +0000", static_cast<int>(ymd.year()),
                  static_cast<unsigned>(ymd.month()), static_cast<unsigned>(ymd.day()),
                  static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                  static_cast<int>(time.seconds().count()));
    return buffer;
}

// An element of a collection prints in its debug form; the empty value there is "()".
std::string elementText(const Value& value) {
    if (value.isEmpty()) return "()";
    return debugDescription(value).value_or(description(value));
}

}  // namespace

std::string doubleText(double value) {
    return floatingText(value, 0x1.0p53);
}
std::string floatText(float value) {
    return floatingText(value, 0x1.0p24f);
}

std::string description(const Value& value) {
    return std::visit(
        [](const auto& v) -> std::string {
            using T = std::decay_t<decltype(v)>;
            if constexpr (std::is_same_v<T, Empty>) {
                return "nil";
            } else if constexpr (std::is_same_v<T, Null>) {
                return "<null>";
            } else if constexpr (std::is_same_v<T, bool>) {
                return v ? "true" : "false";
            } else if constexpr (std::is_same_v<T, std::int64_t> || std::is_same_v<T, std::uint64_t>) {
                return std::to_string(v);
            } else if constexpr (SizedInteger<T>) {
                return std::to_string(+std::to_underlying(v));
            } else if constexpr (std::is_same_v<T, float>) {
                return floatText(v);
            } else if constexpr (std::is_same_v<T, double>) {
                return doubleText(v);
            } else if constexpr (std::is_same_v<T, std::string>) {
                return v;
            } else if constexpr (std::is_same_v<T, Date>) {
                return dateText(v);
            } else if constexpr (std::is_same_v<T, platform::Url>) {
                return v.string();
            } else if constexpr (std::is_same_v<T, platform::Uuid>) {
                return v.string();
            } else if constexpr (std::is_same_v<T, Data>) {
                return std::to_string(v.bytes.size()) + " bytes";
            } else if constexpr (std::is_same_v<T, Array>) {
                std::string out = "[";
                for (std::size_t i = 0; i < v.size(); ++i) {
                    if (i) out += ", ";
                    out += elementText(v[i]);
                }
                return out + "]";
            } else if constexpr (std::is_same_v<T, Map>) {
                if (v.empty()) return "[:]";
                std::string out = "[";
                bool first = true;
                for (const auto& [key, element] : v) {
                    if (!first) out += ", ";
                    first = false;
                    out += quoted(key) + ": " + elementText(element);
                }
                return out + "]";
            } else {
                return v ? v->description() : "nil";
            }
        },
        value.storage());
}

std::optional<std::string> debugDescription(const Value& value) {
    if (const auto* text = value.get<std::string>()) return quoted(*text);
    if (const auto* other = value.get<std::shared_ptr<const OtherValue>>()) {
        return *other ? (*other)->debugDescription() : std::nullopt;
    }
    return std::nullopt;
}

}  // namespace anycodable
