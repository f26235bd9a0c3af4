#pragma once
// KorvaneElements: the element library's static entry points. Request bodies hold elements in
// place of values (see ElementReferenceValue.hpp); the values are read here, at the last moment,
// and the request goes straight to the vault (or to the proxy, or to the URL given), so that
// card data never passes through host code.
//
// Vault calls (`tokenize`, `createToken`, `createSession`, `getTokenById`):
//   - carry "User-Agent" "Korvane iOS Elements", "KV-API-KEY" (the call's key, else the static
//     `apiKey()`, sent even when empty) and a fresh "KV-TRACE-ID";
//   - copy `basePath()` into KorvaneAPI's base path before building the request;
//   - complete exactly once on KorvaneAPI::apiResponseQueue() with a value or an error (the
//     vault's ErrorResponse unchanged), then write "Successful API response" or "Unsuccessful
//     API response" to telemetry with the endpoint label and trace id;
//   - an incomplete element in a body: no request, `TokenizingError::invalidInput`, and the
//     completion runs before the call returns, on the caller's thread.
//   Bodies are taken by value: a host's body keeps its elements whatever happens to the call.
//
// `proxy` and the HTTP helpers complete on the transport's delegate queue (see
// `setHttpSession`) with the response (its body left out), a JSON tree and an error. Response
// leaves are opaque for the proxy unless the response carries the header
// "kv-expose-raw-proxy-response", and always raw for the HTTP helpers. The HTTP status plays
// no part: any response with a JSON object body is a success.
//
// Fatal stops (the message goes to standard error, then abort):
//   - an element in a body whose completeness was never computed, or whose typed value
//     (`int`, `double`, `bool`) reads absent;
//   - a proxy URL that doesn't parse, a proxy body that cannot be written as JSON, a proxy or
//     HTTP response body whose top level is an array;
//   - a token read back whose data is not a JSON object;
//   - an HTTP helper payload whose "Content-Type" is neither JSON nor form
//     ("Content-Type not supported").
//
// Thread safety: the settings may be read and written from any thread (they are meant to be
// set once at start-up). The calls read element values, so they must be made on the main
// queue like every element use.

#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "AnyCodable/AnyCodable.hpp"
#include "Korvane/CreateSessionResponse.hpp"
#include "Korvane/CreateTokenResponse.hpp"
#include "KorvaneElements/Config.hpp"
#include "KorvaneElements/CreateToken.hpp"
#include "KorvaneElements/ElementsError.hpp"
#include "KorvaneElements/GetTokenByIdResponse.hpp"
#include "KorvaneElements/JSON.hpp"
#include "KorvaneElements/ProxyHttpRequest.hpp"
#include "platform/Http.hpp"

namespace platform {
class HttpSession;
}

namespace korvane::elements {

class KorvaneElements {
public:
    template <class T>
    using Completion = std::function<void(std::optional<T>, std::optional<ElementsError>)>;
    // The response without its body, the tree, the error.
    using HttpCompletion =
        std::function<void(std::optional<platform::HttpResponse>, std::optional<JSON>, std::optional<ElementsError>)>;

    // ---- Settings --------------------------------------------------------------------------
    // The key of calls that pass none; empty by default.
    [[nodiscard]] static std::string apiKey();
    static void setApiKey(std::string apiKey);
    // Scheme and host, no trailing slash; KorvaneAPI's default base path by default.
    [[nodiscard]] static std::string basePath();
    static void setBasePath(std::string basePath);
    // The transport of `proxy` and the HTTP helpers; null (the default) uses
    // platform::sharedHttpSession().
    static void setHttpSession(std::shared_ptr<platform::HttpSession> session);

    // ---- Vault calls -----------------------------------------------------------------------
    // POST /tokenize with `body`, references replaced.
    static void tokenize(anycodable::Map body, std::optional<std::string> apiKey,
                         Completion<anycodable::AnyCodable> completion);
    // POST /tokens with `body`, references in its data replaced.
    static void createToken(CreateToken body, std::optional<std::string> apiKey,
                            Completion<korvane::CreateTokenResponse> completion);
    // POST /sessions, no body.
    static void createSession(std::optional<std::string> apiKey, Completion<korvane::CreateSessionResponse> completion);
    // GET /tokens/{id}; the answer's data becomes a tree of opaque leaves. The telemetry label
    // is "GET /tokens/id": token ids stay out of logs.
    static void getTokenById(std::string id, std::optional<std::string> apiKey,
                             Completion<GetTokenByIdResponse> completion);

    // ---- Proxy -----------------------------------------------------------------------------
    // `apiKey` is sent as given (the static key is not used); `proxyKey` wins over `proxyUrl`.
    static void proxy(std::optional<std::string> apiKey, std::optional<std::string> proxyKey,
                      std::optional<std::string> proxyUrl, std::optional<ProxyHttpRequest> proxyHttpRequest,
                      HttpCompletion completion);

    // ---- Direct HTTP helpers -----------------------------------------------------------------
    static void post(std::string url, std::optional<anycodable::Map> payload, std::optional<Config> config,
                     HttpCompletion completion);
    static void put(std::string url, std::optional<anycodable::Map> payload, std::optional<Config> config,
                    HttpCompletion completion);
    static void patch(std::string url, std::optional<anycodable::Map> payload, std::optional<Config> config,
                      HttpCompletion completion);
    static void get(std::string url, std::optional<Config> config, HttpCompletion completion);
    static void delete_(std::string url, std::optional<Config> config, HttpCompletion completion);

    // ---- Reference replacement -------------------------------------------------------------
    // Replaces every element in `body` (and in maps nested in it, not in arrays) by its value,
    // converted by the element's value type: an `int`, `double` or `bool` that doesn't parse
    // removes its key, an absent `string` value removes its key. Stops at the first incomplete
    // element with `invalidInput`, leaving the entries handled so far replaced.
    // `endpoint` and `traceId` label the telemetry lines; values are never logged.
    [[nodiscard]] static std::expected<void, TokenizingError> replaceElementReferences(anycodable::Map& body,
                                                                                       std::string_view endpoint,
                                                                                       std::string_view traceId);
};

}  // namespace korvane::elements
