#pragma once
// CreateTransactionResponse: a new transaction, to be committed or rolled back by its id.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "platform/Uuid.hpp"

namespace korvane {

struct CreateTransactionResponse {
    std::optional<platform::Uuid> id{};
    std::optional<platform::Uuid> createdBy{};
    std::optional<Date> createdAt{};
    std::optional<Date> expiresAt{};

    friend bool operator==(const CreateTransactionResponse&, const CreateTransactionResponse&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("id", &CreateTransactionResponse::id),
                      optional("created_by", &CreateTransactionResponse::createdBy),
                      optional("created_at", &CreateTransactionResponse::createdAt),
                      optional("expires_at", &CreateTransactionResponse::expiresAt));
    }
};

}  // namespace korvane
