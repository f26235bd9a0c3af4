#pragma once
// UpdateTokenRequest: the body of a token update. Unlike creation, an absent "data" is left out.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "AnyCodable/AnyCodable.hpp"
#include "Korvane/EncryptionMetadata.hpp"
#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "Korvane/UpdatePrivacy.hpp"

namespace korvane {

struct UpdateTokenRequest {
    std::optional<anycodable::AnyCodable> data{};
    std::optional<EncryptionMetadata> encryption{};
    std::optional<UpdatePrivacy> privacy{};
    std::optional<std::map<std::string, std::string>> metadata{};
    std::optional<std::vector<std::string>> searchIndexes{};
    std::optional<std::string> fingerprintExpression{};
    std::optional<anycodable::AnyCodable> mask{};
    std::optional<std::string> expiresAt{};
    std::optional<bool> deduplicateToken{};
    std::optional<std::vector<std::string>> containers{};

    friend bool operator==(const UpdateTokenRequest&, const UpdateTokenRequest&) = default;

    static constexpr auto jsonFields() {
        return fields(
            optional("data", &UpdateTokenRequest::data), optional("encryption", &UpdateTokenRequest::encryption),
            optional("privacy", &UpdateTokenRequest::privacy), optional("metadata", &UpdateTokenRequest::metadata),
            optional("search_indexes", &UpdateTokenRequest::searchIndexes),
            optional("fingerprint_expression", &UpdateTokenRequest::fingerprintExpression),
            optional("mask", &UpdateTokenRequest::mask), optional("expires_at", &UpdateTokenRequest::expiresAt),
            optional("deduplicate_token", &UpdateTokenRequest::deduplicateToken),
            optional("containers", &UpdateTokenRequest::containers));
    }
};

}  // namespace korvane
