// `KorvaneElements::proxy`: a request through the vault's proxy endpoint, with element values
// put into its body at the last moment and a response whose leaves stay hidden unless the
// proxy says otherwise.

#include <string>

#include "AnyCodable/JsonWriter.hpp"
#include "ElementsSupport.hpp"
#include "Korvane/KorvaneAPI.hpp"
#include "KorvaneElements/KorvaneElements.hpp"
#include "KorvaneElements/KvDatadogLogger.hpp"
#include "platform/Fatal.hpp"
#include "platform/HttpSession.hpp"
#include "platform/Url.hpp"

namespace korvane::elements {

namespace {

constexpr std::string_view kRawResponseHeader = "kv-expose-raw-proxy-response";

// `url` or the base path and "/proxy", then the path as it stands, then the query unencoded.
std::string proxyUrl(const std::optional<ProxyHttpRequest>& request) {
    std::string url = request && request->url ? *request->url : KorvaneElements::basePath() + "/proxy";
    if (request && request->path) url += *request->path;
    std::string query;
    if (request && request->query) {
        for (const auto& [key, value] : *request->query) {
            if (!query.empty()) query += "&";
            query += key + "=" + value;
        }
    }
    if (!query.empty()) url += "?" + query;
    if (!platform::Url::parse(url)) platform::fatalStop("Invalid proxy URL");
    return url;
}

platform::HttpHeaders proxyHeaders(const std::optional<ProxyHttpRequest>& request, const std::string& traceId,
                                   const std::optional<std::string>& apiKey, const std::optional<std::string>& proxyKey,
                                   const std::optional<std::string>& proxyUrlHeader) {
    platform::HttpHeaders headers;
    if (request && request->headers) {
        for (const auto& [name, value] : *request->headers) headers.set(name, value);
    }
    headers.set("Content-Type", "Application/json");
    headers.set("KV-TRACE-ID", traceId);
    if (apiKey) {
        headers.set("KV-API-KEY", *apiKey);
    } else {
        headers.remove("KV-API-KEY");
    }
    if (proxyKey) {
        headers.set("KV-PROXY-KEY", *proxyKey);
    } else if (proxyUrlHeader) {
        headers.set("KV-PROXY-URL", *proxyUrlHeader);
    }
    return headers;
}

bool hasRawResponseHeader(const platform::HttpResponse& response) {
    for (const auto& [name, value] : response.headers) {
        if (platform::equalsIgnoringCase(name, kRawResponseHeader)) return true;
    }
    return false;
}

// The response as the host may see it: everything but the body, whose leaves it may not read.
platform::HttpResponse withoutBody(platform::HttpResponse response) {
    response.body.clear();
    return response;
}

void handleProxyResponse(const platform::HttpResult& result, const std::string& endpoint, const std::string& traceId,
                         const KorvaneElements::HttpCompletion& completion) {
    if (!result) {
        completion(std::nullopt, std::nullopt, internal::failure(ProxyError::invalidRequest));
        logger().log("Invalid proxy request", "warn", result.error().message,
                     internal::callAttributes(endpoint, traceId));
        return;
    }
    const platform::HttpResponse& response = *result;
    const bool raw = hasRawResponseHeader(response);
    if (response.body.empty()) {
        completion(withoutBody(response), JSON::dictionary(), std::nullopt);
        internal::logApiSuccess(endpoint, traceId, "Successful API response w/ empty/nil body");
        return;
    }
    auto parsed = internal::parseResponseObject(response.body);
    if (!parsed) {
        const std::string error = parsed.error().description();
        completion(withoutBody(response), std::nullopt, internal::failure(std::move(parsed.error())));
        internal::logApiFailure(endpoint, traceId, error);
        return;
    }
    JSON tree = JSON::dictionary();
    internal::buildResponseTree(*parsed, tree, raw ? &internal::makeRawLeaf : &internal::makeOpaqueLeaf);
    completion(withoutBody(response), std::move(tree), std::nullopt);
    internal::logApiSuccess(endpoint, traceId);
}

}  // namespace

void KorvaneElements::proxy(std::optional<std::string> apiKey, std::optional<std::string> proxyKey,
                            std::optional<std::string> proxyUrlHeader, std::optional<ProxyHttpRequest> proxyHttpRequest,
                            HttpCompletion completion) {
    const std::string method(proxyHttpRequest && proxyHttpRequest->method ? rawValue(*proxyHttpRequest->method)
                                                                          : "GET");
    const std::string endpoint =
        method + " " + (proxyHttpRequest && proxyHttpRequest->url ? *proxyHttpRequest->url : basePath() + "/proxy");
    const std::string traceId = internal::newTraceId();
    anycodable::Value query = "nil";
    if (proxyHttpRequest && proxyHttpRequest->query) query = anycodable::Value(*proxyHttpRequest->query);
    internal::logApiRequestStart(
        endpoint, traceId,
        {{"proxyHttpRequestPath", proxyHttpRequest && proxyHttpRequest->path ? *proxyHttpRequest->path : "nil"},
         {"proxyHttpRequestQuery", std::move(query)}});
    korvane::KorvaneAPI::setBasePath(basePath());

    platform::HttpRequest request;
    request.url = proxyUrl(proxyHttpRequest);
    request.method = method;
    request.headers = proxyHeaders(proxyHttpRequest, traceId, apiKey, proxyKey, proxyUrlHeader);
    if (proxyHttpRequest && proxyHttpRequest->body) {
        anycodable::Map body = *proxyHttpRequest->body;
        if (!replaceElementReferences(body, endpoint, traceId)) {
            completion(std::nullopt, std::nullopt, internal::failure(ProxyError::invalidInput));
            return;
        }
        auto encoded = anycodable::toJson(anycodable::Value(std::move(body)));
        if (!encoded) platform::fatalStop("The proxy request body cannot be written as JSON");
        request.body = std::move(*encoded);
    }

    auto session = internal::httpSession();
    auto task = session->dataTask(std::move(request),
                                  [endpoint, traceId, completion = std::move(completion)](platform::HttpResult result) {
                                      handleProxyResponse(result, endpoint, traceId, completion);
                                  });
    task->resume();
}

}  // namespace korvane::elements
