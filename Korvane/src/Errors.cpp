#include <string>
#include <type_traits>

#include "Korvane/DecodableRequestBuilderError.hpp"
#include "Korvane/DownloadException.hpp"
#include "Korvane/ErrorResponse.hpp"

namespace korvane {

std::string_view toString(DownloadException exception) {
    switch (exception) {
        case DownloadException::responseDataMissing:
            return "responseDataMissing";
        case DownloadException::responseFailed:
            return "responseFailed";
        case DownloadException::requestMissing:
            return "requestMissing";
        case DownloadException::requestMissingPath:
            return "requestMissingPath";
        case DownloadException::requestMissingURL:
            return "requestMissingURL";
    }
    return "unknown";
}

DecodableRequestBuilderError DecodableRequestBuilderError::jsonDecoding(anycodable::DecodingError error) {
    DecodableRequestBuilderError result(Kind::jsonDecoding);
    result.decodingError_ = std::move(error);
    return result;
}

DecodableRequestBuilderError DecodableRequestBuilderError::generalError(std::string description) {
    DecodableRequestBuilderError result(Kind::generalError);
    result.generalDescription_ = std::move(description);
    return result;
}

std::string DecodableRequestBuilderError::description() const {
    switch (kind_) {
        case Kind::jsonDecoding:
            return "jsonDecoding(" + (decodingError_ ? decodingError_->description() : std::string()) + ")";
        case Kind::generalError:
            return "generalError(" + generalDescription_ + ")";
        case Kind::emptyDataResponse:
            return "emptyDataResponse";
        case Kind::nilHTTPResponse:
            return "nilHTTPResponse";
        case Kind::unsuccessfulHTTPStatusCode:
            return "unsuccessfulHTTPStatusCode";
    }
    return "unknown";
}

std::string describe(const UnderlyingError& error) {
    return std::visit(
        [](const auto& e) -> std::string {
            using E = std::decay_t<decltype(e)>;
            if constexpr (std::is_same_v<E, platform::HttpError>) {
                return std::string(platform::toString(e.code)) + ": " + e.message;
            } else if constexpr (std::is_same_v<E, DecodableRequestBuilderError>) {
                return e.description();
            } else if constexpr (std::is_same_v<E, DownloadException>) {
                return std::string(toString(e));
            } else if constexpr (std::is_same_v<E, ParameterEncodingError>) {
                return e.message;
            } else if constexpr (std::is_same_v<E, anycodable::DecodingError>) {
                return e.description();
            } else {
                return e.message();
            }
        },
        error);
}

}  // namespace korvane
