#pragma once
// URLEncoding: parameters as the query of the request's URL (GET and HEAD).
//
// Absent parameters leave the request unchanged; a request without a URL fails with
// requestMissingURL; a URL that doesn't parse, or empty parameters, leave it unchanged.
// Otherwise the query is replaced by one item per value, collections exploded (one item per
// element, the key repeated) and absent values dropped; no items at all removes the query.
// Items follow the map's order and are escaped with the URL's queryItem character set.

#include "Korvane/ParameterEncoding.hpp"

namespace korvane {

class URLEncoding : public ParameterEncoding {
public:
    [[nodiscard]] std::expected<platform::HttpRequest, ParameterEncodingError> encode(
        platform::HttpRequest request, const std::optional<Parameters>& parameters) const override;
};

}  // namespace korvane
