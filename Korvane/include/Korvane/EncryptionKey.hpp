#pragma once
// EncryptionKey: one encryption key: its material, provider and algorithm.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct EncryptionKey {
    std::string key{};
    std::optional<std::string> prov{};
    std::optional<std::string> alg{};

    friend bool operator==(const EncryptionKey&, const EncryptionKey&) = default;

    static constexpr auto jsonFields() {
        return fields(required("key", &EncryptionKey::key), optional("prov", &EncryptionKey::prov),
                      optional("alg", &EncryptionKey::alg));
    }
};

}  // namespace korvane
