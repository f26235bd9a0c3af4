#pragma once
// Errors of the direct HTTP helpers (`KorvaneElements::post` and its siblings):
//   invalidURL      the URL text does not parse or has no scheme; nothing was sent
//   invalidRequest  the payload holds an incomplete element (nothing was sent), or no
//                   response came back

#include <string_view>

namespace korvane::elements {

enum class HttpClientError { invalidURL, invalidRequest };

// "HttpClientError.invalidURL", ...
[[nodiscard]] std::string_view toString(HttpClientError error);

}  // namespace korvane::elements
