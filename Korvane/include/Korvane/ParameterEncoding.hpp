#pragma once
// ParameterEncoding: turns a builder's parameters into bytes on a request.
//
// Which encoding runs is the request builder's choice: URLEncoding for GET and HEAD, and by
// the exact "Content-Type" among JSONDataEncoding, FormDataEncoding and FormURLEncoding for
// other methods. `Parameters` is the phone's map of string to any value: an entry whose value
// is the empty value (anycodable::Empty) is an absent optional.
//
// Thread safety: encodings are stateless (FormDataEncoding's callback must be thread-safe if
// it is shared); `encode` may run on any thread.

#include <expected>
#include <optional>
#include <string>

#include "AnyCodable/Value.hpp"
#include "platform/Http.hpp"

namespace korvane {

using Parameters = anycodable::Map;

struct ParameterEncodingError {
    enum class Code {
        requestMissingURL,  // the request has no URL to put a query on
        fileReadFailed,     // a file part could not be read
    };
    Code code = Code::requestMissingURL;
    std::string message;

    friend bool operator==(const ParameterEncodingError&, const ParameterEncodingError&) = default;
};

class ParameterEncoding {
public:
    virtual ~ParameterEncoding() = default;
    [[nodiscard]] virtual std::expected<platform::HttpRequest, ParameterEncodingError> encode(
        platform::HttpRequest request, const std::optional<Parameters>& parameters) const = 0;
};

}  // namespace korvane
