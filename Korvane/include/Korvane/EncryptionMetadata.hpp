#pragma once
// EncryptionMetadata: the keys a token's data was encrypted with.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>

#include "Korvane/EncryptionKey.hpp"
#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct EncryptionMetadata {
    std::optional<EncryptionKey> cek{};
    std::optional<EncryptionKey> kek{};

    friend bool operator==(const EncryptionMetadata&, const EncryptionMetadata&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("cek", &EncryptionMetadata::cek), optional("kek", &EncryptionMetadata::kek));
    }
};

}  // namespace korvane
