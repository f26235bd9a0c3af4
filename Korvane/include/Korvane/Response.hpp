#pragma once
// Response<T>: a successful vault call: the status, the header fields and the typed body.
//
// `Void` is the body of operations without a result; such an operation accepts any status
// of the success range and any body.
//
// Header fields keep the server's spelling; a field sent more than once is joined with ", ",
// as the phone's response does.

#include <map>
#include <string>
#include <utility>

#include "platform/Http.hpp"

namespace korvane {

struct Void {
    friend bool operator==(Void, Void) = default;
};

using HeaderMap = std::map<std::string, std::string>;

// The header fields of a transport response as one map (see the file comment).
[[nodiscard]] HeaderMap headerFields(const platform::HttpHeaders& headers);

template <class T>
struct Response {
    int statusCode = 0;
    HeaderMap header;
    T body;

    Response(int statusCode, HeaderMap header, T body)
        : statusCode(statusCode), header(std::move(header)), body(std::move(body)) {}
    Response(const platform::HttpResponse& response, T body)
        : statusCode(response.status), header(headerFields(response.headers)), body(std::move(body)) {}
};

}  // namespace korvane
