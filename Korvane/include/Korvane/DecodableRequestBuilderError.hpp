#pragma once
// DecodableRequestBuilderError: the failures that a response check names.
//
// The runtime produces three of its cases: `nilHTTPResponse` (code -2),
// `unsuccessfulHTTPStatusCode` (code = the status) and `emptyDataResponse` (a model was
// required and the body was empty). `jsonDecoding` and `generalError` exist for callers that
// wrap their own failures; a body that does not decode is reported with the decoder's error
// itself, not wrapped here.

#include <optional>
#include <string>

#include "AnyCodable/CodingError.hpp"

namespace korvane {

class DecodableRequestBuilderError {
public:
    // Cases in declaration order.
    enum class Kind { jsonDecoding, generalError, emptyDataResponse, nilHTTPResponse, unsuccessfulHTTPStatusCode };

    [[nodiscard]] static DecodableRequestBuilderError jsonDecoding(anycodable::DecodingError error);
    [[nodiscard]] static DecodableRequestBuilderError generalError(std::string description);
    [[nodiscard]] static DecodableRequestBuilderError emptyDataResponse() { return {Kind::emptyDataResponse}; }
    [[nodiscard]] static DecodableRequestBuilderError nilHTTPResponse() { return {Kind::nilHTTPResponse}; }
    [[nodiscard]] static DecodableRequestBuilderError unsuccessfulHTTPStatusCode() {
        return {Kind::unsuccessfulHTTPStatusCode};
    }

    [[nodiscard]] Kind kind() const { return kind_; }
    // Present for `jsonDecoding` only.
    [[nodiscard]] const std::optional<anycodable::DecodingError>& decodingError() const { return decodingError_; }
    // Non-empty for `generalError` only.
    [[nodiscard]] const std::string& generalDescription() const { return generalDescription_; }

    // "emptyDataResponse", "jsonDecoding(<description>)", ...
    [[nodiscard]] std::string description() const;

    friend bool operator==(const DecodableRequestBuilderError&, const DecodableRequestBuilderError&) = default;

private:
    DecodableRequestBuilderError(Kind kind) : kind_(kind) {}

    Kind kind_;
    std::optional<anycodable::DecodingError> decodingError_;
    std::string generalDescription_;
};

}  // namespace korvane
