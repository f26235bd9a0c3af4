#pragma once
// anycodable::Value: one dynamically typed value, the "any" that AnyCodable wraps.
//
// The phone keeps an untyped value and asks it "are you a Bool? an Int? ..." in a fixed order.
// Here every kind of value the type tests can tell apart is one alternative of a variant, so a
// value answers exactly one test and the order of the tests can't change a result.
//
// How the phone's kinds map to alternatives:
//  - `Empty` is the empty value (`Void`) that an absent optional becomes; `Null` is the JSON
//    null marker read from a document. Both write as JSON null but they are different values.
//  - Int and UInt are the platform-word integers (64 bits). Every C++ signed integer type
//    converts to Int and every unsigned one to UInt: C++ integer types don't line up with the
//    phone's (a literal `1` is a 32-bit int here), so the sized kinds are explicit tag types
//    (`Int8{5}`, `UInt32{7}`, ...) and never appear implicitly. JSON reading yields only Int,
//    UInt and double.
//  - The boxed number type of the phone has no C++ counterpart: a boxed number is unboxed by
//    its stored C type into bool, a sized integer or float/double. Those are exactly the
//    alternatives here, so a value that would have been boxed is simply held as the sized
//    alternative its C type names ("c" Int8, "s" Int16, "i"/"l" Int32, "q" Int64, "C" UInt8,
//    "S" UInt16, "I"/"L" UInt32, "Q" UInt64, "f" float, "d" double, "B" bool) and is written
//    as that number. The "type not handled" failure can't arise.
//  - Arrays and maps hold Values. The phone distinguishes arrays of wrappers from arrays of
//    plain values; here both are the same Array, compared and hashed element by element.
//  - Date, Url, Uuid and Data are values the phone's encoder knows how to write (a date
//    through the encoder's date strategy, a URL as its string, a UUID as its upper-case
//    string, data as base64). Like there, they take part in neither equality nor hashing.
//  - `OtherValue` holds anything else, with its own way to write itself (or none).
//
// Thread safety: a Value is a plain value; distinct objects may be used from distinct threads,
// and a const Value may be read from several threads at once.

#include <chrono>
#include <cstdint>
#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "platform/Url.hpp"
#include "platform/Uuid.hpp"

namespace anycodable {

struct Empty {
    friend bool operator==(Empty, Empty) = default;
};
struct Null {
    friend bool operator==(Null, Null) = default;
};

enum class Int8 : std::int8_t {};
enum class Int16 : std::int16_t {};
enum class Int32 : std::int32_t {};
enum class Int64 : std::int64_t {};
enum class UInt8 : std::uint8_t {};
enum class UInt16 : std::uint16_t {};
enum class UInt32 : std::uint32_t {};
enum class UInt64 : std::uint64_t {};

template <class T>
concept SizedInteger =
    std::is_same_v<T, Int8> || std::is_same_v<T, Int16> || std::is_same_v<T, Int32> || std::is_same_v<T, Int64> ||
    std::is_same_v<T, UInt8> || std::is_same_v<T, UInt16> || std::is_same_v<T, UInt32> || std::is_same_v<T, UInt64>;

using Date = std::chrono::system_clock::time_point;

// Binary data, distinct from text.
struct Data {
    std::string bytes;
    friend bool operator==(const Data&, const Data&) = default;
};

class JsonWriter;

// A value of a kind the variant doesn't name. Implementations must be immutable.
class OtherValue {
public:
    virtual ~OtherValue() = default;
    // Writes the value. Returns false, writing nothing, when it has no JSON form; the
    // encoding then fails with "AnyEncodable value cannot be encoded".
    [[nodiscard]] virtual bool encode(JsonWriter& writer) const = 0;
    [[nodiscard]] virtual std::string description() const = 0;
    // Absent when the value has no debug form of its own.
    [[nodiscard]] virtual std::optional<std::string> debugDescription() const { return std::nullopt; }
};

class Value;
using Array = std::vector<Value>;

// A JSON object's members in insertion order.
//
// Small maps (request and response objects of a few keys) are searched linearly; past
// `kLinearLimit` entries the map also keeps a hash index of positions, so that building or
// decoding an object of n keys costs O(n) however large a document a server sends. `erase`
// shifts the later entries and is O(n).
//
// Keys must not be changed through the mutable iterators (values may be).
class Map {
public:
    using Entry = std::pair<std::string, Value>;
    using iterator = std::vector<Entry>::iterator;
    using const_iterator = std::vector<Entry>::const_iterator;
    static constexpr std::size_t kLinearLimit = 12;

    Map() = default;
    // Literal form: on a repeated key the first value wins.
    Map(std::initializer_list<Entry> entries);

    [[nodiscard]] const Value* find(std::string_view key) const;
    [[nodiscard]] Value* find(std::string_view key);
    [[nodiscard]] bool contains(std::string_view key) const { return find(key) != nullptr; }

    // Adds the entry when the key is new; otherwise changes nothing and returns false.
    bool insert(std::string key, Value value);
    // Adds the entry, or replaces the value of an existing key in its place.
    void set(std::string key, Value value);
    bool erase(std::string_view key);

    // REQUIRES: `key` is not present. For builders that check duplicates themselves.
    void appendUnchecked(std::string key, Value value);
    void reserve(std::size_t n);

    [[nodiscard]] std::size_t size() const;
    [[nodiscard]] bool empty() const;
    [[nodiscard]] const_iterator begin() const;
    [[nodiscard]] const_iterator end() const;
    [[nodiscard]] iterator begin();
    [[nodiscard]] iterator end();

private:
    static constexpr std::size_t kAbsent = static_cast<std::size_t>(-1);

    [[nodiscard]] std::size_t positionOf(std::string_view key) const;
    void append(std::string key, Value value);
    void rebuildIndex(std::size_t slotCount);

    std::vector<Entry> entries_;
    // Open addressing with linear probing: each slot holds an entry's position + 1, or 0 when
    // free. Empty while the map is small; otherwise at least twice as many slots as entries.
    std::vector<std::uint32_t> slots_;
};

class Value {
public:
    using Storage = std::variant<Empty, Null, bool, std::int64_t, Int8, Int16, Int32, Int64, std::uint64_t, UInt8,
                                 UInt16, UInt32, UInt64, float, double, std::string, Date, platform::Url,
                                 platform::Uuid, Data, Array, Map, std::shared_ptr<const OtherValue>>;

    Value() = default;
    Value(std::nullptr_t) {}  // the nil literal: the empty value
    Value(Empty) {}
    Value(Null v) : storage_(v) {}
    Value(bool v) : storage_(v) {}
    template <std::signed_integral T>
    requires(!std::is_same_v<T, char>) Value(T v) : storage_(static_cast<std::int64_t>(v)) {}
    template <std::unsigned_integral T>
    requires(!std::is_same_v<T, bool> && !std::is_same_v<T, char>) Value(T v)
        : storage_(static_cast<std::uint64_t>(v)) {}
    template <SizedInteger T>
    Value(T v) : storage_(v) {}
    Value(char) = delete;  // text or number? Say which with a string or an integer type.
    Value(float v) : storage_(v) {}
    Value(double v) : storage_(v) {}
    Value(std::string v) : storage_(std::move(v)) {}
    Value(std::string_view v) : storage_(std::string(v)) {}
    Value(const char* v) : storage_(std::string(v)) {}
    Value(Date v) : storage_(v) {}
    Value(platform::Url v) : storage_(std::move(v)) {}
    Value(platform::Uuid v) : storage_(v) {}
    Value(Data v) : storage_(std::move(v)) {}
    Value(Array v) : storage_(std::move(v)) {}
    Value(Map v) : storage_(std::move(v)) {}
    Value(std::shared_ptr<const OtherValue> v) : storage_(std::move(v)) {}

    // An optional stores its value, or the empty value when it has none.
    template <class T>
    Value(const std::optional<T>& v) : Value(v ? Value(*v) : Value()) {}
    template <class T>
    requires(!std::is_same_v<T, Value>) Value(const std::vector<T>& items)
        : storage_(Array(items.begin(), items.end())) {}
    template <class T, class C>
    Value(const std::map<std::string, T, C>& items) : storage_(Map()) {
        auto& map = std::get<Map>(storage_);
        for (const auto& [key, item] : items) map.appendUnchecked(key, Value(item));
    }

    [[nodiscard]] const Storage& storage() const { return storage_; }
    [[nodiscard]] Storage& storage() { return storage_; }

    template <class T>
    [[nodiscard]] bool is() const {
        return std::holds_alternative<T>(storage_);
    }
    template <class T>
    [[nodiscard]] const T* get() const {
        return std::get_if<T>(&storage_);
    }
    template <class T>
    [[nodiscard]] T* get() {
        return std::get_if<T>(&storage_);
    }
    [[nodiscard]] bool isEmpty() const { return is<Empty>(); }
    [[nodiscard]] bool isNull() const { return is<Null>(); }

private:
    Storage storage_;
};

// Defined here, where Value is complete.
inline std::size_t Map::size() const {
    return entries_.size();
}
inline bool Map::empty() const {
    return entries_.empty();
}
inline Map::const_iterator Map::begin() const {
    return entries_.begin();
}
inline Map::const_iterator Map::end() const {
    return entries_.end();
}
inline Map::iterator Map::begin() {
    return entries_.begin();
}
inline Map::iterator Map::end() {
    return entries_.end();
}

// Which wrapper's rules apply. They differ only in how Null and Empty compare (see
// AnyCodable.hpp) and in the debug description's prefix.
enum class Flavor { codable, decodable, encodable };

// Equality by the wrapper's rules: no numeric widening (Int 1 != double 1.0 != Int32{1}),
// arrays element-wise in order, maps element-wise by key regardless of order.
[[nodiscard]] bool equals(const Value& a, const Value& b, Flavor flavor);

// Hash consistent with `equals`: maps hash independently of their order, arrays feed their
// count then each element; 0.0 and -0.0 hash the same; kinds outside the tests add nothing.
[[nodiscard]] std::size_t hashValue(const Value& value);

// The phone's default text of the value: the empty value prints as "nil", a string as itself,
// a double as "1.0", null as "<null>", an array as `[1, "a"]`, a map as `["k": 1]`.
[[nodiscard]] std::string description(const Value& value);

// The debug text of the value when it has one of its own (a string quoted and escaped);
// absent otherwise.
[[nodiscard]] std::optional<std::string> debugDescription(const Value& value);

// Short name of the value's kind for error texts: "a string", "a number", "null", ...
[[nodiscard]] std::string_view kindName(const Value& value);

// Text of a floating value as the phone prints it: "1.0", "0.0001", "1e-05", "1e+20", "nan".
[[nodiscard]] std::string doubleText(double value);
[[nodiscard]] std::string floatText(float value);

}  // namespace anycodable
