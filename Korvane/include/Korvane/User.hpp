#pragma once
// User: the person behind a tenant member.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "platform/Uuid.hpp"

namespace korvane {

struct User {
    std::optional<platform::Uuid> id{};
    std::optional<std::string> email{};
    std::optional<std::string> firstName{};
    std::optional<std::string> lastName{};
    std::optional<std::string> picture{};

    friend bool operator==(const User&, const User&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("id", &User::id), optional("email", &User::email),
                      optional("first_name", &User::firstName), optional("last_name", &User::lastName),
                      optional("picture", &User::picture));
    }
};

}  // namespace korvane
