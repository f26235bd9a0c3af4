#pragma once
// JSONCodec<T>: how one C++ type is written to and read from JSON. One generic coder serves
// all models (through their field tables, ModelFields.hpp); the specialisations here cover
// the value types that fields use:
//
//   bool, integers (range-checked), float/double, std::string, platform::Uuid (upper-case
//   canonical string; a malformed one fails), Date (through the coder's date strategy),
//   AnyCodable/AnyDecodable/AnyEncodable (any JSON value), std::vector<T>,
//   std::map<std::string, T> (a JSON object), std::optional<T> (null <-> absent, for array
//   elements and map values), NullEncodable<T>, string-backed enums (StringEnum.hpp) and
//   every JsonModel.
//
// Contract of a codec:
//   static void encode(anycodable::JsonWriter&, const T&);   failures go to writer.fail
//   static bool decode(const anycodable::Value&, T& out, DecodeContext&);
// `decode` answers false after recording the error in the context; the caller adds its key
// or index to the error's path on the way out. Nothing throws.
//
// Numbers: an integer field accepts a JSON number that is integral and fits the field's type
// (1.0 is 1; 1.5, 300 for an 8-bit field, or a string are errors). A floating field accepts
// any number. A bool field accepts only true and false.
//
// Thread safety: stateless; a DecodeContext belongs to one decoding.

#include <concepts>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "AnyCodable/AnyCodable.hpp"
#include "Korvane/ModelFields.hpp"
#include "Korvane/NullEncodable.hpp"
#include "Korvane/StringEnum.hpp"
#include "platform/Uuid.hpp"

namespace korvane {

using Date = anycodable::Date;
using anycodable::DecodingError;
using anycodable::EncodingError;

class DecodeContext {
public:
    // How dates are read. Empty: a number of seconds since 2001-01-01T00:00:00Z.
    std::function<std::optional<Date>(std::string_view)> parseDate;

    // Records a failure with an empty path; always answers false.
    bool fail(DecodingError::Kind kind, std::string debugDescription);
    // A value of the wrong kind: valueNotFound for null, typeMismatch otherwise.
    bool mismatch(std::string_view expected, const anycodable::Value& found);
    // Adds the key or index of the enclosing container in front of the error's path.
    void prepend(std::string element);

    [[nodiscard]] const std::optional<DecodingError>& error() const { return error_; }
    [[nodiscard]] DecodingError takeError() { return std::move(*error_); }

private:
    std::optional<DecodingError> error_;
};

template <class T>
struct JSONCodec;

namespace codec_internal {
// The value as a signed or unsigned 64-bit integer when it is an integral number.
bool integerOf(const anycodable::Value& value, std::int64_t& i, std::uint64_t& u, bool& isUnsigned);
bool doubleOf(const anycodable::Value& value, double& out);
}  // namespace codec_internal

template <>
struct JSONCodec<bool> {
    static void encode(anycodable::JsonWriter& w, bool v) { w.boolean(v); }
    static bool decode(const anycodable::Value& v, bool& out, DecodeContext& ctx) {
        if (const bool* b = v.get<bool>()) {
            out = *b;
            return true;
        }
        return ctx.mismatch("Bool", v);
    }
};

template <class T>
requires(std::integral<T> && !std::is_same_v<T, bool> && !std::is_same_v<T, char>) struct JSONCodec<T> {
    static void encode(anycodable::JsonWriter& w, T v) {
        if constexpr (std::is_signed_v<T>) {
            w.integer(v);
        } else {
            w.unsignedInteger(v);
        }
    }
    static bool decode(const anycodable::Value& v, T& out, DecodeContext& ctx) {
        std::int64_t i = 0;
        std::uint64_t u = 0;
        bool isUnsigned = false;
        if (!codec_internal::integerOf(v, i, u, isUnsigned)) {
            if (v.get<double>() || v.get<float>()) {
                return ctx.fail(DecodingError::Kind::dataCorrupted, "Parsed JSON number does not fit in an integer.");
            }
            return ctx.mismatch("Int", v);
        }
        bool fits = isUnsigned ? std::in_range<T>(u) : std::in_range<T>(i);
        if (!fits) {
            return ctx.fail(DecodingError::Kind::dataCorrupted,
                            "Parsed JSON number does not fit in a " + std::to_string(sizeof(T) * 8) + "-bit integer.");
        }
        out = isUnsigned ? static_cast<T>(u) : static_cast<T>(i);
        return true;
    }
};

template <std::floating_point T>
struct JSONCodec<T> {
    static void encode(anycodable::JsonWriter& w, T v) { w.number(v); }
    static bool decode(const anycodable::Value& v, T& out, DecodeContext& ctx) {
        double d = 0;
        if (!codec_internal::doubleOf(v, d)) return ctx.mismatch("Double", v);
        out = static_cast<T>(d);
        return true;
    }
};

template <>
struct JSONCodec<std::string> {
    static void encode(anycodable::JsonWriter& w, const std::string& v) { w.string(v); }
    static bool decode(const anycodable::Value& v, std::string& out, DecodeContext& ctx) {
        if (const auto* s = v.get<std::string>()) {
            out = *s;
            return true;
        }
        return ctx.mismatch("String", v);
    }
};

template <>
struct JSONCodec<platform::Uuid> {
    static void encode(anycodable::JsonWriter& w, const platform::Uuid& v) { w.string(v.string()); }
    static bool decode(const anycodable::Value& v, platform::Uuid& out, DecodeContext& ctx);
};

template <>
struct JSONCodec<Date> {
    static void encode(anycodable::JsonWriter& w, Date v) { w.date(v); }
    static bool decode(const anycodable::Value& v, Date& out, DecodeContext& ctx);
};

template <anycodable::Flavor F>
struct JSONCodec<anycodable::BasicAny<F>> {
    static void encode(anycodable::JsonWriter& w, const anycodable::BasicAny<F>& v) {
        anycodable::writeValue(w, v.value);
    }
    static bool decode(const anycodable::Value& v, anycodable::BasicAny<F>& out, DecodeContext&) {
        out = anycodable::BasicAny<F>(v);
        return true;
    }
};

template <class T>
struct JSONCodec<std::optional<T>> {
    static void encode(anycodable::JsonWriter& w, const std::optional<T>& v) {
        if (v) {
            JSONCodec<T>::encode(w, *v);
        } else {
            w.null();
        }
    }
    static bool decode(const anycodable::Value& v, std::optional<T>& out, DecodeContext& ctx) {
        if (v.isNull() || v.isEmpty()) {
            out.reset();
            return true;
        }
        out.emplace();
        return JSONCodec<T>::decode(v, *out, ctx);
    }
};

template <class T>
struct JSONCodec<std::vector<T>> {
    static void encode(anycodable::JsonWriter& w, const std::vector<T>& v) {
        w.beginArray();
        for (const auto& element : v) JSONCodec<T>::encode(w, element);
        w.endArray();
    }
    static bool decode(const anycodable::Value& v, std::vector<T>& out, DecodeContext& ctx) {
        const auto* array = v.get<anycodable::Array>();
        if (!array) return ctx.mismatch("Array<Any>", v);
        out.clear();
        out.resize(array->size());
        for (std::size_t i = 0; i < array->size(); ++i) {
            if (!JSONCodec<T>::decode((*array)[i], out[i], ctx)) {
                ctx.prepend("Index " + std::to_string(i));
                return false;
            }
        }
        return true;
    }
};

template <class T, class C>
struct JSONCodec<std::map<std::string, T, C>> {
    static void encode(anycodable::JsonWriter& w, const std::map<std::string, T, C>& v) {
        w.beginObject();
        for (const auto& [key, element] : v) {
            w.key(key);
            JSONCodec<T>::encode(w, element);
        }
        w.endObject();
    }
    static bool decode(const anycodable::Value& v, std::map<std::string, T, C>& out, DecodeContext& ctx) {
        const auto* map = v.get<anycodable::Map>();
        if (!map) return ctx.mismatch("Dictionary<String, Any>", v);
        out.clear();
        for (const auto& [key, element] : *map) {
            T decoded{};
            if (!JSONCodec<T>::decode(element, decoded, ctx)) {
                ctx.prepend(key);
                return false;
            }
            out.insert_or_assign(key, std::move(decoded));
        }
        return true;
    }
};

template <class T>
struct JSONCodec<NullEncodable<T>> {
    // In a field table encodeNothing leaves the key out; anywhere else it writes nothing,
    // which leaves the document incomplete, so it is written as null there.
    static void encode(anycodable::JsonWriter& w, const NullEncodable<T>& v) {
        if (v.isValue()) {
            JSONCodec<T>::encode(w, v.value());
        } else {
            w.null();
        }
    }
    static bool decode(const anycodable::Value& v, NullEncodable<T>& out, DecodeContext&) {
        DecodeContext attempt;
        T decoded{};
        if (JSONCodec<T>::decode(v, decoded, attempt)) {
            out = NullEncodable<T>::encodeValue(std::move(decoded));
        } else {
            out = v.isNull() ? NullEncodable<T>::encodeNull() : NullEncodable<T>::encodeNothing();
        }
        return true;
    }
};

template <StringEnum T>
struct JSONCodec<T> {
    static void encode(anycodable::JsonWriter& w, T v) { w.string(rawValue(v)); }
    static bool decode(const anycodable::Value& v, T& out, DecodeContext& ctx) {
        const auto* s = v.get<std::string>();
        if (!s) return ctx.mismatch("String", v);
        if (auto parsed = fromRawValue<T>(*s)) {
            out = *parsed;
            return true;
        }
        return ctx.fail(DecodingError::Kind::dataCorrupted, "Cannot initialize from an invalid String value.");
    }
};

namespace codec_internal {

// Open content is written after the named fields, see JSONCodec<Model>::encode.
template <class Model>
void encodeField(anycodable::JsonWriter&, const Model&, const OpenContentField<Model>&) {}

template <class Model, class Member>
void encodeField(anycodable::JsonWriter& w, const Model& model, const Field<Model, Member>& field) {
    const Member& value = model.*(field.member);
    if constexpr (IsNullEncodable<Member>::value) {
        if (value.isNothing()) return;
        w.key(field.key);
        JSONCodec<Member>::encode(w, value);
    } else if (field.presence == Presence::required) {
        w.key(field.key);
        JSONCodec<Member>::encode(w, value);
    } else if constexpr (requires { value.has_value(); }) {
        if (value) {
            w.key(field.key);
            JSONCodec<typename Member::value_type>::encode(w, *value);
        } else if (field.presence == Presence::alwaysWritten) {
            w.key(field.key);
            w.null();
        }
    }
}

template <class Model>
bool decodeField(const anycodable::Map&, Model&, const OpenContentField<Model>&, DecodeContext&) {
    return true;  // read after the named fields, see JSONCodec<Model>::decode
}

template <class Model, class Member>
bool decodeField(const anycodable::Map& map, Model& model, const Field<Model, Member>& field, DecodeContext& ctx) {
    const anycodable::Value* found = map.find(field.key);
    Member& target = model.*(field.member);
    bool ok = true;
    if constexpr (IsNullEncodable<Member>::value) {
        target = Member::encodeNothing();
        if (found) ok = JSONCodec<Member>::decode(*found, target, ctx);
    } else if (field.presence == Presence::required) {
        if (!found) {
            return ctx.fail(DecodingError::Kind::keyNotFound,
                            "No value associated with key \"" + std::string(field.key) + "\".");
        }
        ok = JSONCodec<Member>::decode(*found, target, ctx);
    } else if constexpr (requires { target.has_value(); }) {
        if (!found || found->isNull()) {
            target.reset();
            return true;
        }
        target.emplace();
        ok = JSONCodec<typename Member::value_type>::decode(*found, *target, ctx);
    }
    if (!ok) ctx.prepend(std::string(field.key));
    return ok;
}

template <class Field>
constexpr std::string_view fieldKey(const Field& field) {
    if constexpr (requires { field.key; }) {
        return field.key;
    } else {
        return {};
    }
}

template <class Model>
bool isNamedKey(std::string_view key) {
    return std::apply(
        [&](const auto&... field) { return ((!fieldKey(field).empty() && fieldKey(field) == key) || ...); },
        Model::jsonFields());
}

template <class Model, class Tuple>
struct OpenContentIn;
template <class Model, class... Fields>
struct OpenContentIn<Model, std::tuple<Fields...>>
    : std::bool_constant<(std::is_same_v<Fields, OpenContentField<Model>> || ...)> {};

// Whether the model's table has an additionalProperties row; decided at compile time so that
// models without open content carry no code for it.
template <class Model>
inline constexpr bool kHasOpenContent = OpenContentIn<Model, decltype(Model::jsonFields())>::value;

template <class Model>
constexpr AdditionalProperties Model::*openContentMember() {
    AdditionalProperties Model::*member = nullptr;
    std::apply(
        [&](const auto&... field) {
            (
                [&] {
                    if constexpr (std::is_same_v<std::decay_t<decltype(field)>, OpenContentField<Model>>) {
                        member = field.member;
                    }
                }(),
                ...);
        },
        Model::jsonFields());
    return member;
}

}  // namespace codec_internal

template <JsonModel T>
struct JSONCodec<T> {
    static void encode(anycodable::JsonWriter& w, const T& model) {
        w.beginObject();
        std::apply([&](const auto&... field) { (codec_internal::encodeField(w, model, field), ...); }, T::jsonFields());
        if constexpr (codec_internal::kHasOpenContent<T>) {
            for (const auto& [key, value] : model.*codec_internal::openContentMember<T>()) {
                if (codec_internal::isNamedKey<T>(key)) continue;
                w.key(key);
                anycodable::writeValue(w, value.value);
            }
        }
        w.endObject();
    }

    static bool decode(const anycodable::Value& v, T& out, DecodeContext& ctx) {
        const auto* map = v.get<anycodable::Map>();
        if (!map) return ctx.mismatch("Dictionary<String, Any>", v);
        bool ok = std::apply(
            [&](const auto&... field) { return (codec_internal::decodeField(*map, out, field, ctx) && ...); },
            T::jsonFields());
        if (!ok) return false;
        if constexpr (codec_internal::kHasOpenContent<T>) {
            auto& extra = out.*codec_internal::openContentMember<T>();
            extra.clear();
            for (const auto& [key, value] : *map) {
                if (!codec_internal::isNamedKey<T>(key)) extra.insert_or_assign(key, anycodable::AnyCodable(value));
            }
        }
        return true;
    }
};

template <class T>
concept JSONCodable = requires(anycodable::JsonWriter& w, const T& v, T& out, const anycodable::Value& value,
                               DecodeContext& ctx) {
    JSONCodec<T>::encode(w, v);
    { JSONCodec<T>::decode(value, out, ctx) } -> std::same_as<bool>;
};

// Hash of a model or field value, consistent with the models' defaulted equality.
template <class T>
[[nodiscard]] std::size_t hashOf(const T& value);

namespace codec_internal {
inline void combineHash(std::size_t& seed, std::size_t h) {
    seed ^= h + 0x9e3779b97f4a7c15ULL + (seed << 6) + (seed >> 2);
}
}  // namespace codec_internal

template <class T>
std::size_t hashOf(const T& value) {
    std::size_t seed = 0;
    if constexpr (JsonModel<T>) {
        std::apply(
            [&](const auto&... field) { (codec_internal::combineHash(seed, hashOf(value.*(field.member))), ...); },
            T::jsonFields());
    } else if constexpr (requires {
                             value.has_value();
                             *value;
                         }) {
        codec_internal::combineHash(seed, value ? hashOf(*value) + 1 : 0);
    } else if constexpr (requires {
                             value.begin();
                             value.size();
                         } &&
                         !std::is_same_v<T, std::string>) {
        codec_internal::combineHash(seed, value.size());
        for (const auto& element : value) codec_internal::combineHash(seed, hashOf(element));
    } else if constexpr (requires {
                             value.first;
                             value.second;
                         }) {
        codec_internal::combineHash(seed, hashOf(value.first));
        codec_internal::combineHash(seed, hashOf(value.second));
    } else if constexpr (std::is_same_v<T, Date>) {
        seed = std::hash<Date::rep>{}(value.time_since_epoch().count());
    } else if constexpr (IsNullEncodable<T>::value) {
        seed = value.isValue() ? hashOf(value.value()) + 2 : (value.isNull() ? 1 : 0);
    } else {
        seed = std::hash<T>{}(value);
    }
    return seed;
}

}  // namespace korvane

template <korvane::JsonModel T>
struct std::hash<T> {
    std::size_t operator()(const T& value) const noexcept { return korvane::hashOf(value); }
};
