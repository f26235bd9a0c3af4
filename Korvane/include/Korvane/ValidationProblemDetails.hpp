#pragma once
// ValidationProblemDetails: a problem report with the messages for each invalid request
// field under "errors", with open content as ProblemDetails.
//
// Plain value: equality-comparable, hashable (std::hash).

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "AnyCodable/AnyCodable.hpp"
#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct ValidationProblemDetails {
    std::optional<std::map<std::string, std::vector<std::string>>> errors{};
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

    friend bool operator==(const ValidationProblemDetails&, const ValidationProblemDetails&) = default;

    static constexpr auto jsonFields() {
        return fields(
            optional("errors", &ValidationProblemDetails::errors), optional("type", &ValidationProblemDetails::type),
            optional("title", &ValidationProblemDetails::title), optional("status", &ValidationProblemDetails::status),
            optional("detail", &ValidationProblemDetails::detail),
            optional("instance", &ValidationProblemDetails::instance),
            korvane::additionalProperties(&ValidationProblemDetails::additionalProperties));
    }
};

}  // namespace korvane
