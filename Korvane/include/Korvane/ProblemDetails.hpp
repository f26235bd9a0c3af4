#pragma once
// ProblemDetails: a problem report of the vault, with open content.
//
// The named fields are read and written as usual; every other key of the object is kept in
// `additionalProperties` and written back after the named fields. No operation decodes it:
// error bodies reach callers as raw data in ErrorResponse, and a caller that wants the report
// decodes it itself:
//
//     auto problem = CodableHelper::decode<ProblemDetails>(*error.data);
//
// Plain value: equality-comparable, hashable (std::hash).

#include <optional>
#include <string>

#include "AnyCodable/AnyCodable.hpp"
#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct ProblemDetails {
    std::optional<std::string> type{};
    std::optional<std::string> title{};
    std::optional<int> status{};
    std::optional<std::string> detail{};
    std::optional<std::string> instance{};
    AdditionalProperties additionalProperties{};

    // The subscript by key over the open content; setting absent removes the key.
    [[nodiscard]] std::optional<anycodable::AnyCodable> operator[](const std::string& key) const {
        return additionalProperty(additionalProperties, key);
    }
    void set(const std::string& key, std::optional<anycodable::AnyCodable> value) {
        setAdditionalProperty(additionalProperties, key, std::move(value));
    }

    friend bool operator==(const ProblemDetails&, const ProblemDetails&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("type", &ProblemDetails::type), optional("title", &ProblemDetails::title),
                      optional("status", &ProblemDetails::status), optional("detail", &ProblemDetails::detail),
                      optional("instance", &ProblemDetails::instance),
                      korvane::additionalProperties(&ProblemDetails::additionalProperties));
    }
};

}  // namespace korvane
