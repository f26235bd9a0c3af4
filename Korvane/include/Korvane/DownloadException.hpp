#pragma once
// DownloadException: why a request could not be built or a download could not be stored.
//
// `requestMissingURL` is also what a builder reports (as code 415) when its URL string does
// not parse. The other cases come from the download path (code 400).

#include <string_view>

namespace korvane {

// Cases in declaration order.
enum class DownloadException {
    responseDataMissing,
    responseFailed,
    requestMissing,
    requestMissingPath,
    requestMissingURL
};

// The case's name, "requestMissingURL".
[[nodiscard]] std::string_view toString(DownloadException exception);

}  // namespace korvane
