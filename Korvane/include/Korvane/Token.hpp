#pragma once
// Token: a stored token as the vault answers it.
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
#include "platform/Uuid.hpp"

namespace korvane {

struct Token {
    std::optional<std::string> id{};
    std::optional<std::string> type{};
    std::optional<platform::Uuid> tenantId{};
    std::optional<anycodable::AnyCodable> data{};
    std::optional<std::map<std::string, std::string>> metadata{};
    std::optional<EncryptionMetadata> encryption{};
    std::optional<platform::Uuid> createdBy{};
    std::optional<Date> createdAt{};
    std::optional<platform::Uuid> modifiedBy{};
    std::optional<Date> modifiedAt{};
    std::optional<std::string> fingerprint{};
    std::optional<std::string> fingerprintExpression{};
    std::optional<anycodable::AnyCodable> mask{};
    std::optional<Privacy> privacy{};
    std::optional<std::vector<std::string>> searchIndexes{};
    std::optional<Date> expiresAt{};
    std::optional<std::vector<std::string>> containers{};
    std::optional<std::vector<std::string>> aliases{};

    friend bool operator==(const Token&, const Token&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("id", &Token::id), optional("type", &Token::type),
                      optional("tenant_id", &Token::tenantId), optional("data", &Token::data),
                      optional("metadata", &Token::metadata), optional("encryption", &Token::encryption),
                      optional("created_by", &Token::createdBy), optional("created_at", &Token::createdAt),
                      optional("modified_by", &Token::modifiedBy), optional("modified_at", &Token::modifiedAt),
                      optional("fingerprint", &Token::fingerprint),
                      optional("fingerprint_expression", &Token::fingerprintExpression), optional("mask", &Token::mask),
                      optional("privacy", &Token::privacy), optional("search_indexes", &Token::searchIndexes),
                      optional("expires_at", &Token::expiresAt), optional("containers", &Token::containers),
                      optional("aliases", &Token::aliases));
    }
};

}  // namespace korvane
