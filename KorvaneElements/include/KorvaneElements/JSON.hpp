#pragma once
// JSON: the tree a proxy call, an HTTP helper or a token read answers with.
//
// A node is one of four cases:
//   elementValueReference  an opaque leaf: the host can hand it to an element's
//                          `setValue(elementValueReference)` (or an expiry's month and year
//                          setter) but cannot read it
//   arrayValue             ordered nodes, each possibly absent
//   dictionaryValue        nodes by key
//   rawValue               a readable leaf (direct HTTP responses, and proxy responses that
//                          carry the "kv-expose-raw-proxy-response" header)
//
// Reading: `json["key"]` answers the entry of a dictionary and absent for any other case or a
// missing key; `json[i]` answers the element of an array and absent for another case or an
// index at or past the end. A negative index stops the process. Writing (`set`) changes a
// container in place and does nothing to a leaf.
//
// Thread safety: a plain value. The opaque leaves are shared with whoever copies the tree.

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "AnyCodable/Value.hpp"
#include "KorvaneElements/ElementValueReference.hpp"

namespace korvane::elements {

class JSON {
public:
    enum class Case { elementValueReference, arrayValue, dictionaryValue, rawValue };
    using Array = std::vector<std::optional<JSON>>;
    using Dictionary = std::map<std::string, JSON, std::less<>>;

    // An empty dictionary.
    JSON();
    [[nodiscard]] static JSON reference(std::shared_ptr<ElementValueReference> reference);
    [[nodiscard]] static JSON array(Array items = {});
    [[nodiscard]] static JSON dictionary(Dictionary entries = {});
    [[nodiscard]] static JSON raw(anycodable::Value value);

    [[nodiscard]] Case kind() const;

    [[nodiscard]] std::optional<JSON> operator[](std::string_view key) const;
    [[nodiscard]] std::optional<JSON> operator[](std::ptrdiff_t index) const;

    // In a dictionary: stores the node under `key`, or removes the key when `value` is absent.
    void set(std::string key, std::optional<JSON> value);
    // In an array: replaces the element at `index`, extending the array with absent elements
    // when `index` is at or past its end. A negative index stops the process.
    void set(std::ptrdiff_t index, std::optional<JSON> value);
    // In an array: adds the node at the end.
    void append(std::optional<JSON> value);

    // The payload of the node's own case, or null / absent.
    [[nodiscard]] std::shared_ptr<ElementValueReference> elementValueReference() const;
    [[nodiscard]] std::optional<anycodable::Value> rawValue() const;
    [[nodiscard]] const Array* arrayValue() const;
    [[nodiscard]] const Dictionary* dictionaryValue() const;

private:
    using Payload = std::variant<std::shared_ptr<ElementValueReference>, Array, Dictionary, anycodable::Value>;
    // Built in place: a moved temporary variant trips g++ 12's uninitialised-use analysis.
    template <std::size_t I, class... Args>
    explicit JSON(std::in_place_index_t<I> index, Args&&... args) : payload_(index, std::forward<Args>(args)...) {}

    Payload payload_;
};

}  // namespace korvane::elements
