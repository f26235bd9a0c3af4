#pragma once
// CreateTokenRequest: the body of a token creation. "data" is always on the wire: an absent value goes out as
// null (the other absent fields are left out).
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
#include "Korvane/Privacy.hpp"

namespace korvane {

struct CreateTokenRequest {
    std::optional<std::string> id{};
    std::optional<std::string> type{};
    std::optional<anycodable::AnyCodable> data{};
    std::optional<EncryptionMetadata> encryption{};
    std::optional<Privacy> privacy{};
    std::optional<std::map<std::string, std::string>> metadata{};
    std::optional<std::vector<std::string>> searchIndexes{};
    std::optional<std::string> fingerprintExpression{};
    std::optional<anycodable::AnyCodable> mask{};
    std::optional<bool> deduplicateToken{};
    std::optional<std::string> expiresAt{};
    std::optional<std::vector<std::string>> containers{};

    friend bool operator==(const CreateTokenRequest&, const CreateTokenRequest&) = default;

    static constexpr auto jsonFields() {
        return fields(
            optional("id", &CreateTokenRequest::id), optional("type", &CreateTokenRequest::type),
            alwaysWritten("data", &CreateTokenRequest::data), optional("encryption", &CreateTokenRequest::encryption),
            optional("privacy", &CreateTokenRequest::privacy), optional("metadata", &CreateTokenRequest::metadata),
            optional("search_indexes", &CreateTokenRequest::searchIndexes),
            optional("fingerprint_expression", &CreateTokenRequest::fingerprintExpression),
            optional("mask", &CreateTokenRequest::mask),
            optional("deduplicate_token", &CreateTokenRequest::deduplicateToken),
            optional("expires_at", &CreateTokenRequest::expiresAt),
            optional("containers", &CreateTokenRequest::containers));
    }
};

}  // namespace korvane
