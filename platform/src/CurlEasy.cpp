#include "CurlEasy.hpp"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>

namespace platform::http_internal {

namespace {

std::string_view trim(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t' || s.back() == '\r' || s.back() == '\n'))
        s.remove_suffix(1);
    return s;
}

size_t onBody(char* data, size_t size, size_t count, void* user) {
    auto& sink = *static_cast<AttemptSink*>(user);
    sink.response.body.append(data, size * count);
    return size * count;
}

size_t onHeader(char* data, size_t size, size_t count, void* user) {
    auto& sink = *static_cast<AttemptSink*>(user);
    const std::string_view line(data, size * count);
    if (line.starts_with("HTTP/")) {
        // A new response starts (redirect, interim 1xx, auth round): keep only the last.
        sink.response.headers = HttpHeaders();
        sink.response.body.clear();
        const auto space = line.find(' ');
        sink.status = space == std::string_view::npos ? 0 : std::atoi(std::string(line.substr(space + 1, 3)).c_str());
        return line.size();
    }
    const auto content = trim(line);
    if (content.empty()) return line.size();
    if ((line.front() == ' ' || line.front() == '\t') && !sink.response.headers.empty()) {
        // Obsolete line folding: continues the previous field.
        auto fields = sink.response.headers.fields();
        fields.back().second.append(" ").append(content);
        HttpHeaders rebuilt;
        for (auto& [name, value] : fields) rebuilt.add(std::move(name), std::move(value));
        sink.response.headers = std::move(rebuilt);
        return line.size();
    }
    const auto colon = content.find(':');
    if (colon == std::string_view::npos) return line.size();
    std::string name(trim(content.substr(0, colon)));
    std::string value(trim(content.substr(colon + 1)));
    // The next request would carry the body and every header (API keys included): a redirect
    // that leaves the origin, or goes from https to http, ends the transfer before it is sent.
    if (sink.status >= 300 && sink.status < 400 && equalsIgnoringCase(name, "Location") &&
        originOf(sink.origin, value) != sink.origin) {
        sink.redirectRefused = true;
        return 0;
    }
    sink.response.headers.add(std::move(name), std::move(value));
    return line.size();
}

int onProgress(void* user, curl_off_t downTotal, curl_off_t downNow, curl_off_t upTotal, curl_off_t upNow) {
    auto& sink = *static_cast<AttemptSink*>(user);
    if (sink.progress != nullptr) {
        sink.progress->updateReceive(downNow, downTotal > 0 ? downTotal : -1);
        sink.progress->updateSend(upNow, upTotal > 0 ? upTotal : -1);
    }
    return 0;
}

bool sendsBody(const HttpRequest& request) {
    // POST, PUT and PATCH always announce their length, so that a server never waits for a
    // body that is not coming.
    return !request.body.empty() || request.method == "POST" || request.method == "PUT" || request.method == "PATCH";
}

}  // namespace

std::string originOf(const std::string& base, const std::string& location) {
    CURLU* url = curl_url();
    std::string origin;
    if (curl_url_set(url, CURLUPART_URL, base.c_str(), 0) == CURLUE_OK &&
        (location.empty() || curl_url_set(url, CURLUPART_URL, location.c_str(), 0) == CURLUE_OK)) {
        char* scheme = nullptr;
        char* host = nullptr;
        char* port = nullptr;
        if (curl_url_get(url, CURLUPART_SCHEME, &scheme, 0) == CURLUE_OK &&
            curl_url_get(url, CURLUPART_HOST, &host, 0) == CURLUE_OK &&
            curl_url_get(url, CURLUPART_PORT, &port, CURLU_DEFAULT_PORT) == CURLUE_OK) {
            origin = std::string(scheme) + "://" + host + ":" + port;
        }
        curl_free(scheme);
        curl_free(host);
        curl_free(port);
    }
    curl_url_cleanup(url);
    return origin;
}

HttpError httpErrorFromCurl(CURLcode code, const char* detail) {
    HttpErrorCode mapped = HttpErrorCode::other;
    switch (code) {
        case CURLE_UNSUPPORTED_PROTOCOL:
        case CURLE_URL_MALFORMAT:
            mapped = HttpErrorCode::invalidUrl;
            break;
        case CURLE_COULDNT_RESOLVE_PROXY:
        case CURLE_COULDNT_RESOLVE_HOST:
        case CURLE_COULDNT_CONNECT:
            mapped = HttpErrorCode::cannotConnect;
            break;
        case CURLE_OPERATION_TIMEDOUT:
            mapped = HttpErrorCode::timedOut;
            break;
        case CURLE_PARTIAL_FILE:
        case CURLE_RECV_ERROR:
        case CURLE_SEND_ERROR:
        case CURLE_GOT_NOTHING:
            mapped = HttpErrorCode::connectionLost;
            break;
        case CURLE_SSL_CONNECT_ERROR:
        case CURLE_PEER_FAILED_VERIFICATION:
        case CURLE_SSL_CERTPROBLEM:
        case CURLE_SSL_CIPHER:
        case CURLE_SSL_CACERT_BADFILE:
        case CURLE_SSL_ENGINE_NOTFOUND:
        case CURLE_SSL_ENGINE_SETFAILED:
        case CURLE_SSL_ENGINE_INITFAILED:
        case CURLE_SSL_ISSUER_ERROR:
        case CURLE_SSL_PINNEDPUBKEYNOTMATCH:
        case CURLE_SSL_INVALIDCERTSTATUS:
        case CURLE_SSL_CRL_BADFILE:
        case CURLE_SSL_SHUTDOWN_FAILED:
        case CURLE_USE_SSL_FAILED:
            mapped = HttpErrorCode::tls;
            break;
        case CURLE_TOO_MANY_REDIRECTS:
            mapped = HttpErrorCode::tooManyRedirects;
            break;
        default:
            break;
    }
    std::string message = (detail != nullptr && *detail != '\0') ? detail : curl_easy_strerror(code);
    return HttpError{mapped, std::move(message), static_cast<int>(code)};
}

std::optional<HttpError> validateUrl(const std::string& url) {
    CURLU* parsed = curl_url();
    const CURLUcode rc = curl_url_set(parsed, CURLUPART_URL, url.c_str(), 0);
    std::optional<HttpError> error;
    if (rc != CURLUE_OK) {
        error = HttpError{HttpErrorCode::invalidUrl, "invalid URL: " + std::string(curl_url_strerror(rc)),
                          static_cast<int>(rc)};
    } else {
        char* scheme = nullptr;
        if (curl_url_get(parsed, CURLUPART_SCHEME, &scheme, 0) == CURLUE_OK) {
            const std::string_view s(scheme);
            if (s != "http" && s != "https")
                error = HttpError{HttpErrorCode::invalidUrl, "unsupported scheme: " + std::string(s), 0};
            curl_free(scheme);
        }
    }
    curl_url_cleanup(parsed);
    return error;
}

curl_slist* configureEasy(CURL* easy, const HttpRequest& request, AttemptSink& sink,
                          const std::optional<AttemptAuth>& auth, void* owner) {
    curl_easy_setopt(easy, CURLOPT_URL, request.url.c_str());
    // Paths go out as built: dot segments are refused where requests are built, not resolved here.
    curl_easy_setopt(easy, CURLOPT_PATH_AS_IS, 1L);
    sink.origin = originOf(request.url);
    sink.status = 0;
    sink.redirectRefused = false;
    curl_easy_setopt(easy, CURLOPT_PRIVATE, owner);
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(easy, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(easy, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(easy, CURLOPT_MAXREDIRS, 16L);
    curl_easy_setopt(easy, CURLOPT_SSL_VERIFYPEER, 1L);
    curl_easy_setopt(easy, CURLOPT_SSL_VERIFYHOST, 2L);
    curl_easy_setopt(easy, CURLOPT_TIMEOUT_MS, static_cast<long>(std::max<std::int64_t>(1, request.timeout.count())));
    curl_easy_setopt(easy, CURLOPT_ERRORBUFFER, sink.errorBuffer);
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &onBody);
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, &sink);
    curl_easy_setopt(easy, CURLOPT_HEADERFUNCTION, &onHeader);
    curl_easy_setopt(easy, CURLOPT_HEADERDATA, &sink);
    curl_easy_setopt(easy, CURLOPT_NOPROGRESS, 0L);
    curl_easy_setopt(easy, CURLOPT_XFERINFOFUNCTION, &onProgress);
    curl_easy_setopt(easy, CURLOPT_XFERINFODATA, &sink);

    if (request.method == "HEAD") {
        curl_easy_setopt(easy, CURLOPT_NOBODY, 1L);
    } else if (sendsBody(request)) {
        curl_easy_setopt(easy, CURLOPT_POST, 1L);
        curl_easy_setopt(easy, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(request.body.size()));
        curl_easy_setopt(easy, CURLOPT_POSTFIELDS, request.body.data());
        if (request.method != "POST") curl_easy_setopt(easy, CURLOPT_CUSTOMREQUEST, request.method.c_str());
    } else if (request.method != "GET") {
        curl_easy_setopt(easy, CURLOPT_CUSTOMREQUEST, request.method.c_str());
    }

    if (auth) {
        curl_easy_setopt(easy, CURLOPT_USERNAME, auth->credential.user.c_str());
        curl_easy_setopt(easy, CURLOPT_PASSWORD, auth->credential.password.c_str());
        curl_easy_setopt(easy, CURLOPT_HTTPAUTH,
                         auth->scheme == HttpAuthScheme::digest ? CURLAUTH_DIGEST : CURLAUTH_BASIC);
    }

    curl_slist* list = nullptr;
    for (const auto& [name, value] : request.headers) {
        // "Name;" is curl's way to send a field with an empty value.
        const std::string line = value.empty() ? name + ";" : name + ": " + value;
        list = curl_slist_append(list, line.c_str());
    }
    // A bare "Name:" removes a field curl would otherwise add on its own.
    if (!request.headers.contains("Expect")) list = curl_slist_append(list, "Expect:");
    if (!request.headers.contains("Content-Type")) list = curl_slist_append(list, "Content-Type:");
    curl_easy_setopt(easy, CURLOPT_HTTPHEADER, list);
    return list;
}

}  // namespace platform::http_internal
