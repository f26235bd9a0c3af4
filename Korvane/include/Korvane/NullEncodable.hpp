#pragma once
// NullEncodable<Wrapped>: a field that must tell an absent value from an explicit null.
//
//   encodeValue(v)  writes v
//   encodeNothing   writes nothing: in a field table the key is left out
//   encodeNull      writes JSON null
//
// Decoding tries Wrapped first; if that fails the error is swallowed and the value is tested
// for null: null gives encodeNull, anything else (including a missing key) encodeNothing.
// No model of this client has such a field; it is in the runtime for generated models.

#include <cstddef>
#include <functional>
#include <utility>
#include <variant>

namespace korvane {

template <class Wrapped>
class NullEncodable {
public:
    struct Nothing {
        friend bool operator==(Nothing, Nothing) = default;
    };
    struct Null {
        friend bool operator==(Null, Null) = default;
    };

    // Cases in the declared order: value, nothing, null.
    NullEncodable() : state_(Nothing{}) {}
    [[nodiscard]] static NullEncodable encodeValue(Wrapped value) { return NullEncodable(std::move(value)); }
    [[nodiscard]] static NullEncodable encodeNothing() { return NullEncodable(); }
    [[nodiscard]] static NullEncodable encodeNull() {
        NullEncodable result;
        result.state_ = Null{};
        return result;
    }

    [[nodiscard]] bool isValue() const { return state_.index() == 0; }
    [[nodiscard]] bool isNothing() const { return state_.index() == 1; }
    [[nodiscard]] bool isNull() const { return state_.index() == 2; }
    // REQUIRES: isValue().
    [[nodiscard]] const Wrapped& value() const { return std::get<0>(state_); }

    friend bool operator==(const NullEncodable&, const NullEncodable&) = default;

private:
    explicit NullEncodable(Wrapped value) : state_(std::in_place_index<0>, std::move(value)) {}
    std::variant<Wrapped, Nothing, Null> state_;
};

template <class T>
struct IsNullEncodable : std::false_type {};
template <class T>
struct IsNullEncodable<NullEncodable<T>> : std::true_type {};

}  // namespace korvane
