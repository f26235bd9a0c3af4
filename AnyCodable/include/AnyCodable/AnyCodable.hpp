#pragma once
// AnyCodable, AnyDecodable, AnyEncodable: a JSON value of unknown shape carried through typed
// models (token data, masks, tokenize bodies, reactor arguments).
//
// Each wrapper has one field, `value` (see Value.hpp for the kinds it can hold).
//
//                  reads JSON   writes JSON   array/map literals
//   AnyCodable        yes          yes            yes
//   AnyDecodable      yes          no             no
//   AnyEncodable      no           yes            yes
//
// Construction: from any value Value accepts (`AnyCodable x = 1; AnyCodable s = "a";`), from
// an optional (absent gives the empty value), `nullptr` for the nil literal, and
// `AnyCodable::array({1, "a", nullptr})` / `AnyCodable::map({{"k", 1}, {"k", 2}})` for the
// collection literals; in a map literal the first value of a repeated key wins.
//
// Equality (no numeric widening: 1 != 1.0, Int 1 != Int32{1}):
//  - AnyCodable: two empty values are equal; two Nulls are equal (the phone reaches that case
//    last, after maps and arrays, with the same result).
//  - AnyDecodable: two Nulls, or two empty values, are equal.
//  - AnyEncodable: two empty values are equal; two Nulls are NOT equal, as the phone's
//    AnyEncodable has no null case. Kept deliberately.
//  - bools, integers of the same kind, floats, doubles and strings compare by value; arrays
//    element-wise in order; maps element-wise by key. Every other pair is unequal.
// Hashing follows Value.hpp's `hashValue` and is the same for all three.
//
// Description: the empty value prints "nil", other values their own text. Debug description:
// "AnyCodable(" + the value's debug text (a string quoted) or its description + ")", with
// "AnyDecodable(" and "AnyEncodable(" for the others.
//
// Thread safety: as Value.

#include <cstddef>
#include <expected>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "AnyCodable/CodingError.hpp"
#include "AnyCodable/JsonReader.hpp"
#include "AnyCodable/JsonWriter.hpp"
#include "AnyCodable/Value.hpp"

namespace anycodable {

template <Flavor F>
struct BasicAny {
    Value value;

    BasicAny() = default;
    template <class T>
    requires(std::is_constructible_v<Value, T&&> && !std::is_same_v<std::remove_cvref_t<T>, BasicAny>) BasicAny(T&& v)
        : value(std::forward<T>(v)) {}

    // The array literal: the elements in order.
    [[nodiscard]] static BasicAny array(std::initializer_list<Value> items) requires(F != Flavor::decodable) {
        return BasicAny(Value(Array(items)));
    }
    // The dictionary literal: on a repeated key the first value wins.
    [[nodiscard]] static BasicAny map(std::initializer_list<Map::Entry> entries) requires(F != Flavor::decodable) {
        return BasicAny(Value(Map(entries)));
    }

    // Reads one JSON document.
    [[nodiscard]] static std::expected<BasicAny, DecodingError> fromJson(std::string_view text) requires(
        F != Flavor::encodable) {
        auto read = readJson(text);
        if (!read) return std::unexpected(std::move(read.error()));
        return BasicAny(std::move(*read));
    }

    [[nodiscard]] std::expected<std::string, EncodingError> toJson(EncodingOptions options = {}) const
        requires(F != Flavor::decodable) {
        return anycodable::toJson(value, std::move(options));
    }
    void encode(JsonWriter& writer) const requires(F != Flavor::decodable) { writeValue(writer, value); }

    [[nodiscard]] std::string description() const { return anycodable::description(value); }
    [[nodiscard]] std::string debugDescription() const {
        constexpr std::string_view prefix = F == Flavor::codable     ? "AnyCodable("
                                            : F == Flavor::decodable ? "AnyDecodable("
                                                                     : "AnyEncodable(";
        return std::string(prefix) + anycodable::debugDescription(value).value_or(description()) + ")";
    }

    friend bool operator==(const BasicAny& a, const BasicAny& b) { return equals(a.value, b.value, F); }
};

using AnyCodable = BasicAny<Flavor::codable>;
using AnyDecodable = BasicAny<Flavor::decodable>;
using AnyEncodable = BasicAny<Flavor::encodable>;

}  // namespace anycodable

template <anycodable::Flavor F>
struct std::hash<anycodable::BasicAny<F>> {
    std::size_t operator()(const anycodable::BasicAny<F>& any) const noexcept {
        return anycodable::hashValue(any.value);
    }
};
