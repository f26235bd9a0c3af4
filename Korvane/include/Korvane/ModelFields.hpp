#pragma once
// Field tables: how a model declares its JSON form once.
//
// A model is a plain struct with a static `jsonFields()` that lists its fields in wire order.
// The generic coder of JSONCodec.hpp encodes and decodes every model from that table, so
// adding a model is a struct plus a table:
//
//   struct EncryptionKey {
//       std::string key;
//       std::optional<std::string> prov;
//       std::optional<std::string> alg;
//
//       friend bool operator==(const EncryptionKey&, const EncryptionKey&) = default;
//       static constexpr auto jsonFields() {
//           return korvane::fields(korvane::required("key", &EncryptionKey::key),
//                                  korvane::optional("prov", &EncryptionKey::prov),
//                                  korvane::optional("alg", &EncryptionKey::alg));
//       }
//   };
//
// Presence:
//  - required: always written; decoding fails (keyNotFound) when the key is missing, and a
//    null where a value is expected is valueNotFound.
//  - optional (member is std::optional): written only when present, so absent is never sent
//    as null; a missing key or a JSON null decodes as absent.
//  - alwaysWritten (member is std::optional): like optional, except that an absent value is
//    written as null. For the one request model whose "data" member is always on the wire.
//  - nullable (member is NullEncodable): encodeNothing omits the key, encodeNull writes null;
//    see NullEncodable.hpp for decoding.
//  - additionalProperties (member is std::map<std::string, AnyCodable>): open content. Every
//    key the table doesn't name is read into the map; on writing, the pairs follow the named
//    fields in the same object (a pair whose key names a field is skipped so that no key is
//    written twice). Without it, unknown keys are ignored.
//
// Models are default constructible, equality-comparable (`= default`) and hashable through
// the std::hash specialisation of JSONCodec.hpp.

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>

#include "AnyCodable/AnyCodable.hpp"

namespace korvane {

enum class Presence { required, optional, alwaysWritten, nullable };

template <class Model, class Member>
struct Field {
    std::string_view key;
    Member Model::*member;
    Presence presence;
};

using AdditionalProperties = std::map<std::string, anycodable::AnyCodable>;

template <class Model>
struct OpenContentField {
    AdditionalProperties Model::*member;
};

template <class Model, class Member>
[[nodiscard]] constexpr Field<Model, Member> required(std::string_view key, Member Model::*member) {
    return {key, member, Presence::required};
}

template <class Model, class Member>
[[nodiscard]] constexpr Field<Model, std::optional<Member>> optional(std::string_view key,
                                                                     std::optional<Member> Model::*member) {
    return {key, member, Presence::optional};
}

template <class Model, class Member>
[[nodiscard]] constexpr Field<Model, std::optional<Member>> alwaysWritten(std::string_view key,
                                                                          std::optional<Member> Model::*member) {
    return {key, member, Presence::alwaysWritten};
}

template <class Model, class Member>
[[nodiscard]] constexpr Field<Model, Member> nullable(std::string_view key, Member Model::*member) {
    return {key, member, Presence::nullable};
}

template <class Model>
[[nodiscard]] constexpr OpenContentField<Model> additionalProperties(AdditionalProperties Model::*member) {
    return {member};
}

// The member that one form of a shared model does not have (an update body has no "id", a
// problem report without field errors has no "errors"): empty, equal to itself, and never in
// a field table, so it never reaches the wire.
struct NoField {
    friend bool operator==(NoField, NoField) = default;
};

template <class... Fields>
[[nodiscard]] constexpr std::tuple<Fields...> fields(Fields... f) {
    return {f...};
}

template <class T>
concept JsonModel = requires {
    T::jsonFields();
};

// Reads and writes one key of an open-content model; writing absent removes the key. The
// subscript that the open-content models offer is this pair.
[[nodiscard]] inline std::optional<anycodable::AnyCodable> additionalProperty(const AdditionalProperties& map,
                                                                              const std::string& key) {
    auto it = map.find(key);
    if (it == map.end()) return std::nullopt;
    return it->second;
}
inline void setAdditionalProperty(AdditionalProperties& map, const std::string& key,
                                  std::optional<anycodable::AnyCodable> value) {
    if (value) {
        map.insert_or_assign(key, std::move(*value));
    } else {
        map.erase(key);
    }
}

}  // namespace korvane
