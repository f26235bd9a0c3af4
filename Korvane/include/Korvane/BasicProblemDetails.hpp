#pragma once
// BasicProblemDetails<ListsFieldErrors>: a problem report of the vault, with open content.
// ProblemDetails is the plain report; ValidationProblemDetails also lists the messages for each
// invalid request field under "errors", written first (in ProblemDetails `errors` is a NoField
// that never reaches the wire).
//
// The named fields are read and written as usual; every other key of the object is kept in
// `additionalProperties` and written back after the named fields. No operation decodes a
// report: error bodies reach callers as raw data in ErrorResponse, and a caller that wants the
// report decodes it itself:
//
//     auto problem = CodableHelper::decode<ProblemDetails>(*error.data);
//
// Plain value: equality-comparable, hashable (std::hash).

#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

#include "AnyCodable/AnyCodable.hpp"
#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

template <bool ListsFieldErrors>
struct BasicProblemDetails {
    std::conditional_t<ListsFieldErrors, std::optional<std::map<std::string, std::vector<std::string>>>, NoField>
        errors{};
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

    friend bool operator==(const BasicProblemDetails&, const BasicProblemDetails&) = default;

    static constexpr auto jsonFields() {
        using P = BasicProblemDetails;
        auto report = fields(optional("type", &P::type), optional("title", &P::title), optional("status", &P::status),
                             optional("detail", &P::detail), optional("instance", &P::instance),
                             korvane::additionalProperties(&P::additionalProperties));
        if constexpr (ListsFieldErrors) {
            return std::tuple_cat(fields(optional("errors", &P::errors)), report);
        } else {
            return report;
        }
    }
};

}  // namespace korvane
