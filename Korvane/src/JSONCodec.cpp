#include "Korvane/JSONCodec.hpp"

#include <cmath>

namespace korvane {

bool DecodeContext::fail(DecodingError::Kind kind, std::string debugDescription) {
    error_ = DecodingError{kind, {}, std::move(debugDescription)};
    return false;
}

bool DecodeContext::mismatch(std::string_view expected, const anycodable::Value& found) {
    if (found.isNull() || found.isEmpty()) {
        return fail(DecodingError::Kind::valueNotFound,
                    "Expected " + std::string(expected) + " value but found null instead.");
    }
    return fail(DecodingError::Kind::typeMismatch, "Expected to decode " + std::string(expected) + " but found " +
                                                       std::string(anycodable::kindName(found)) + " instead.");
}

void DecodeContext::prepend(std::string element) {
    if (error_) error_->codingPath.insert(error_->codingPath.begin(), std::move(element));
}

namespace codec_internal {

bool integerOf(const anycodable::Value& value, std::int64_t& i, std::uint64_t& u, bool& isUnsigned) {
    return std::visit(
        [&](const auto& v) -> bool {
            using T = std::decay_t<decltype(v)>;
            if constexpr (std::is_same_v<T, std::int64_t>) {
                i = v;
                isUnsigned = false;
                return true;
            } else if constexpr (std::is_same_v<T, std::uint64_t>) {
                u = v;
                isUnsigned = true;
                return true;
            } else if constexpr (anycodable::SizedInteger<T>) {
                if constexpr (std::is_signed_v<std::underlying_type_t<T>>) {
                    i = std::to_underlying(v);
                    isUnsigned = false;
                } else {
                    u = std::to_underlying(v);
                    isUnsigned = true;
                }
                return true;
            } else if constexpr (std::is_same_v<T, double> || std::is_same_v<T, float>) {
                double d = v;
                if (!std::isfinite(d) || d != std::trunc(d)) return false;
                if (d >= -9223372036854775808.0 && d < 9223372036854775808.0) {
                    i = static_cast<std::int64_t>(d);
                    isUnsigned = false;
                    return true;
                }
                if (d > 0 && d < 18446744073709551616.0) {
                    u = static_cast<std::uint64_t>(d);
                    isUnsigned = true;
                    return true;
                }
                return false;
            } else {
                return false;
            }
        },
        value.storage());
}

bool doubleOf(const anycodable::Value& value, double& out) {
    return std::visit(
        [&](const auto& v) -> bool {
            using T = std::decay_t<decltype(v)>;
            if constexpr (std::is_same_v<T, std::int64_t> || std::is_same_v<T, std::uint64_t> ||
                          std::is_same_v<T, double> || std::is_same_v<T, float>) {
                out = static_cast<double>(v);
                return true;
            } else if constexpr (anycodable::SizedInteger<T>) {
                out = static_cast<double>(std::to_underlying(v));
                return true;
            } else {
                return false;
            }
        },
        value.storage());
}

}  // namespace codec_internal

bool JSONCodec<platform::Uuid>::decode(const anycodable::Value& v, platform::Uuid& out, DecodeContext& ctx) {
    const auto* text = v.get<std::string>();
    if (!text) return ctx.mismatch("UUID", v);
    auto parsed = platform::Uuid::parse(*text);
    if (!parsed) {
        return ctx.fail(DecodingError::Kind::dataCorrupted, "Attempted to decode UUID from invalid UUID string.");
    }
    out = *parsed;
    return true;
}

bool JSONCodec<Date>::decode(const anycodable::Value& v, Date& out, DecodeContext& ctx) {
    if (ctx.parseDate) {
        const auto* text = v.get<std::string>();
        if (!text) return ctx.mismatch("String", v);
        auto parsed = ctx.parseDate(*text);
        if (!parsed) {
            return ctx.fail(DecodingError::Kind::dataCorrupted,
                            "Date string does not match format expected by formatter.");
        }
        out = *parsed;
        return true;
    }
    double seconds = 0;
    if (!codec_internal::doubleOf(v, seconds)) return ctx.mismatch("Double", v);
    constexpr double referenceDateOffset = 978307200.0;
    double sinceEpoch = seconds + referenceDateOffset;
    if (!std::isfinite(sinceEpoch) || std::fabs(sinceEpoch) > 1e15) {
        return ctx.fail(DecodingError::Kind::dataCorrupted, "The date is out of range.");
    }
    out = Date(std::chrono::duration_cast<Date::duration>(std::chrono::duration<double>(sinceEpoch)));
    return true;
}

}  // namespace korvane
