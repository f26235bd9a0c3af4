#pragma once
// ErrorResponse: every failure a vault call delivers to its completion.
//
//   code   415   the request could not be built (bad URL, encoding failure); nothing was sent
//          -1    transport error, cancellation included (underlying: platform::HttpError)
//          -2    no HTTP response
//          the status, when it is outside Configuration::successfulStatusCodeRange, when a
//                model was required and the body was empty, or when the body did not decode
//          400   a download could not be stored
//   data   the response body as received, when there was one (absent for 415 and for an
//          empty body where a model was required)
//   response  the HTTP response without its body (the bytes are in `data`)
//   error  the underlying error, one of the alternatives of UnderlyingError
//
// A JSON error body is not parsed here: callers that want ProblemDetails decode `data`.

#include <optional>
#include <string>
#include <system_error>
#include <variant>

#include "AnyCodable/CodingError.hpp"
#include "Korvane/DecodableRequestBuilderError.hpp"
#include "Korvane/DownloadException.hpp"
#include "Korvane/ParameterEncoding.hpp"
#include "platform/Http.hpp"

namespace korvane {

// std::error_code stands for file-system failures of the download path.
using UnderlyingError = std::variant<platform::HttpError, DecodableRequestBuilderError, DownloadException,
                                     ParameterEncodingError, anycodable::DecodingError, std::error_code>;

// One line describing the underlying error, for logs.
[[nodiscard]] std::string describe(const UnderlyingError& error);

struct ErrorResponse {
    int code = 0;
    std::optional<std::string> data;
    std::optional<platform::HttpResponse> response;
    UnderlyingError error;

    // Convenience: the underlying error as `E`, or null.
    template <class E>
    [[nodiscard]] const E* errorAs() const {
        return std::get_if<E>(&error);
    }

    friend bool operator==(const ErrorResponse&, const ErrorResponse&) = default;
};

}  // namespace korvane
