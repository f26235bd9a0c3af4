#pragma once
// Internal: one libcurl easy handle configured for one attempt of one HttpRequest, and the
// mapping of libcurl's result codes onto HttpErrorCode. Used only on a session's I/O thread.

#include "platform/Http.hpp"
#include "platform/HttpSession.hpp"

#include <curl/curl.h>

#include <memory>
#include <optional>

namespace platform::http_internal {

[[nodiscard]] HttpError httpErrorFromCurl(CURLcode code, const char* detail);

// Null when `url` is an absolute http(s) URL curl can use; otherwise the error to deliver.
[[nodiscard]] std::optional<HttpError> validateUrl(const std::string& url);

// What one attempt writes into while it runs.
struct AttemptSink {
    HttpResponse response;
    HttpProgress* progress = nullptr;
    char errorBuffer[CURL_ERROR_SIZE] = {};
    // Redirects are followed only within the origin of the request as built.
    std::string origin;
    int status = 0;  // of the response being read
    bool redirectRefused = false;
};

// "scheme://host:port" of `location` read relative to `base`, ports always explicit; empty when
// either doesn't parse.
[[nodiscard]] std::string originOf(const std::string& base, const std::string& location = {});

struct AttemptAuth {
    HttpCredential credential;
    HttpAuthScheme scheme = HttpAuthScheme::basic;
};

// Sets every option of `easy` for `request`. `request` and `sink` must outlive the attempt;
// the returned list must be freed (curl_slist_free_all) after it.
[[nodiscard]] curl_slist* configureEasy(CURL* easy, const HttpRequest& request, AttemptSink& sink,
                                        const std::optional<AttemptAuth>& auth, void* owner);

}  // namespace platform::http_internal
