#pragma once
// CreateTokenResponse: the answer to a token creation.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "AnyCodable/AnyCodable.hpp"
#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "Korvane/Privacy.hpp"
#include "platform/Uuid.hpp"

namespace korvane {

struct CreateTokenResponse {
    std::optional<std::string> id{};
    std::optional<platform::Uuid> tenantId{};
    std::optional<std::string> type{};
    std::optional<std::string> fingerprint{};
    std::optional<std::string> fingerprintExpression{};
    std::optional<anycodable::AnyCodable> mask{};
    std::optional<anycodable::AnyCodable> data{};
    std::optional<std::map<std::string, std::string>> metadata{};
    std::optional<Privacy> privacy{};
    std::optional<std::vector<std::string>> searchIndexes{};
    std::optional<platform::Uuid> createdBy{};
    std::optional<Date> createdAt{};
    std::optional<platform::Uuid> modifiedBy{};
    std::optional<Date> modifiedAt{};
    std::optional<Date> expiresAt{};
    std::optional<std::vector<std::string>> containers{};
    std::optional<std::vector<std::string>> aliases{};

    friend bool operator==(const CreateTokenResponse&, const CreateTokenResponse&) = default;

    static constexpr auto jsonFields() {
        return fields(
            optional("id", &CreateTokenResponse::id), optional("tenant_id", &CreateTokenResponse::tenantId),
            optional("type", &CreateTokenResponse::type), optional("fingerprint", &CreateTokenResponse::fingerprint),
            optional("fingerprint_expression", &CreateTokenResponse::fingerprintExpression),
            optional("mask", &CreateTokenResponse::mask), optional("data", &CreateTokenResponse::data),
            optional("metadata", &CreateTokenResponse::metadata), optional("privacy", &CreateTokenResponse::privacy),
            optional("search_indexes", &CreateTokenResponse::searchIndexes),
            optional("created_by", &CreateTokenResponse::createdBy),
            optional("created_at", &CreateTokenResponse::createdAt),
            optional("modified_by", &CreateTokenResponse::modifiedBy),
            optional("modified_at", &CreateTokenResponse::modifiedAt),
            optional("expires_at", &CreateTokenResponse::expiresAt),
            optional("containers", &CreateTokenResponse::containers),
            optional("aliases", &CreateTokenResponse::aliases));
    }
};

}  // namespace korvane
