#pragma once
// HTTP value types shared by every transport: request, response, error and the result of one
// exchange. Plain values; safe to copy between threads.

#include "platform/Result.hpp"

#include <chrono>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform {

// HttpHeaders
//
// An ordered list of header fields. Names are compared without regard to ASCII case, as
// HTTP requires, but are kept as written. A response keeps every field the server sent,
// duplicates included, in arrival order.
class HttpHeaders {
public:
    using Field = std::pair<std::string, std::string>;

    HttpHeaders() = default;
    HttpHeaders(std::initializer_list<Field> fields);

    // The value of the first field named `name`, or absent.
    [[nodiscard]] std::optional<std::string> get(std::string_view name) const;
    // Every value of the fields named `name`, in order.
    [[nodiscard]] std::vector<std::string> getAll(std::string_view name) const;
    [[nodiscard]] bool contains(std::string_view name) const;

    // Replaces: the first field of that name takes `value` (and the new spelling of the
    // name), later ones are removed; without one, the field is appended.
    void set(std::string name, std::string value);
    // Appends without looking for an existing field (for repeated fields).
    void add(std::string name, std::string value);
    // Removes every field of that name; answers how many went.
    std::size_t remove(std::string_view name);

    [[nodiscard]] const std::vector<Field>& fields() const { return fields_; }
    [[nodiscard]] std::size_t size() const { return fields_.size(); }
    [[nodiscard]] bool empty() const { return fields_.empty(); }
    [[nodiscard]] auto begin() const { return fields_.begin(); }
    [[nodiscard]] auto end() const { return fields_.end(); }

    friend bool operator==(const HttpHeaders&, const HttpHeaders&) = default;

private:
    std::vector<Field> fields_;
};

// ASCII case-insensitive equality, as used for header names.
[[nodiscard]] bool equalsIgnoringCase(std::string_view a, std::string_view b);

struct HttpCredential {
    std::string user;
    std::string password;

    friend bool operator==(const HttpCredential&, const HttpCredential&) = default;
};

inline constexpr std::chrono::milliseconds kDefaultHttpTimeout{60'000};

struct HttpRequest {
    // Sent exactly as written ("GET", "POST", "QUERY", ...).
    std::string method = "GET";
    // Absolute URL with its query already in place.
    std::string url;
    HttpHeaders headers;
    // Raw bytes; empty means the request has no body.
    std::string body;
    // Limit for the whole exchange, connection included.
    std::chrono::milliseconds timeout = kDefaultHttpTimeout;
    // Offered when the server asks for authentication and the session's challenge handler
    // (if any) answers with default handling.
    std::optional<HttpCredential> credential;

    friend bool operator==(const HttpRequest&, const HttpRequest&) = default;
};

struct HttpResponse {
    int status = 0;
    HttpHeaders headers;
    std::string body;
    // The URL that finally answered (after redirects).
    std::string url;

    friend bool operator==(const HttpResponse&, const HttpResponse&) = default;
};

enum class HttpErrorCode {
    invalidUrl,
    cannotConnect,
    timedOut,
    cancelled,
    connectionLost,  // the server closed the connection before the whole response arrived
    tls,
    tooManyRedirects,
    redirectRefused,  // a redirect to another origin (scheme, host and port), which is never followed
    other,
};

[[nodiscard]] std::string_view toString(HttpErrorCode code);

struct HttpError {
    HttpErrorCode code = HttpErrorCode::other;
    std::string message;
    // The transport's own error number, for diagnostics only (0 when there is none).
    int nativeCode = 0;

    friend bool operator==(const HttpError&, const HttpError&) = default;
};

using HttpResult = Result<HttpResponse, HttpError>;
using HttpCompletion = std::function<void(HttpResult)>;

}  // namespace platform
