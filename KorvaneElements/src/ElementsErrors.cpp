#include "ElementsSupport.hpp"
#include "KorvaneElements/ElementsError.hpp"
#include "KorvaneElements/HttpMethod.hpp"

#include <string>

namespace korvane::elements {

std::string_view toString(TokenizingError error) {
    switch (error) {
        case TokenizingError::invalidApiKey:
            return "TokenizingError.invalidApiKey";
        case TokenizingError::invalidInput:
            return "TokenizingError.invalidInput";
    }
    return "TokenizingError";
}

std::string_view toString(ProxyError error) {
    switch (error) {
        case ProxyError::invalidRequest:
            return "ProxyError.invalidRequest";
        case ProxyError::invalidInput:
            return "ProxyError.invalidInput";
    }
    return "ProxyError";
}

std::string_view toString(HttpClientError error) {
    switch (error) {
        case HttpClientError::invalidURL:
            return "HttpClientError.invalidURL";
        case HttpClientError::invalidRequest:
            return "HttpClientError.invalidRequest";
    }
    return "HttpClientError";
}

std::string describe(const ElementsError& error) {
    struct Describer {
        std::string operator()(TokenizingError e) const { return std::string(toString(e)); }
        std::string operator()(ProxyError e) const { return std::string(toString(e)); }
        std::string operator()(HttpClientError e) const { return std::string(toString(e)); }
        std::string operator()(const korvane::ErrorResponse& e) const {
            return "ErrorResponse(" + std::to_string(e.code) + "): " + korvane::describe(e.error);
        }
        std::string operator()(const anycodable::DecodingError& e) const { return e.description(); }
    };
    return std::visit(Describer{}, error);
}

namespace internal {
namespace {
template <class E>
std::optional<ElementsError> inPlace(E&& error) {
    return std::optional<ElementsError>(std::in_place, std::in_place_type<std::remove_cvref_t<E>>,
                                        std::forward<E>(error));
}
}  // namespace
std::optional<ElementsError> failure(TokenizingError error) {
    return inPlace(error);
}
std::optional<ElementsError> failure(ProxyError error) {
    return inPlace(error);
}
std::optional<ElementsError> failure(HttpClientError error) {
    return inPlace(error);
}
std::optional<ElementsError> failure(korvane::ErrorResponse error) {
    return inPlace(std::move(error));
}
std::optional<ElementsError> failure(anycodable::DecodingError error) {
    return inPlace(std::move(error));
}
}  // namespace internal

namespace {
struct MethodNames {
    HttpMethod method;
    std::string_view raw;
    std::string_view name;
};
constexpr MethodNames kMethods[] = {
    {HttpMethod::get, "GET", "get"},
    {HttpMethod::post, "POST", "post"},
    {HttpMethod::put, "PUT", "put"},
    {HttpMethod::delete_, "DELETE", "delete"},
    {HttpMethod::patch, "PATCH", "patch"},
    {HttpMethod::head, "HEAD", "head"},
    {HttpMethod::options, "OPTIONS", "options"},
    {HttpMethod::connect, "CONNECT", "connect"},
    {HttpMethod::query, "QUERY", "query"},
    {HttpMethod::trace, "TRACE", "trace"},
};
}  // namespace

std::string_view rawValue(HttpMethod method) {
    for (const auto& m : kMethods) {
        if (m.method == method) return m.raw;
    }
    return "GET";
}

std::string_view caseName(HttpMethod method) {
    for (const auto& m : kMethods) {
        if (m.method == method) return m.name;
    }
    return "get";
}

}  // namespace korvane::elements
