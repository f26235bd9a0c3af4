#pragma once
// CreateSessionResponse: a new session: the key that the element library hands to its caller, the
// nonce to authorize it with, and when it expires.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct CreateSessionResponse {
    std::optional<std::string> sessionKey{};
    std::optional<std::string> nonce{};
    std::optional<Date> expiresAt{};

    friend bool operator==(const CreateSessionResponse&, const CreateSessionResponse&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("session_key", &CreateSessionResponse::sessionKey),
                      optional("nonce", &CreateSessionResponse::nonce),
                      optional("expires_at", &CreateSessionResponse::expiresAt));
    }
};

}  // namespace korvane
