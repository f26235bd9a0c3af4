#pragma once
// JSONDataEncoding: puts an already encoded JSON body on a request.
//
// A body travels through a builder's parameters as binary data under the key "jsonData"
// (see `encodingParameters`). Encoding sets it as the body and, when the request has no
// "Content-Type" yet, "application/json". Parameters without binary data under that key, or
// with empty data, leave the request as it was. It never fails.

#include <optional>
#include <string>
#include <string_view>

#include "Korvane/ParameterEncoding.hpp"

namespace korvane {

struct JSONDataEncoding : ParameterEncoding {
    static constexpr std::string_view kJsonDataKey = "jsonData";

    [[nodiscard]] std::expected<platform::HttpRequest, ParameterEncodingError> encode(
        platform::HttpRequest request, const std::optional<Parameters>& parameters) const override;

    // Absent or empty data gives absent; otherwise {"jsonData": data}.
    [[nodiscard]] static std::optional<Parameters> encodingParameters(const std::optional<std::string>& jsonData);
};

}  // namespace korvane
