// The direct HTTP helpers: a request to a URL of the host's choosing, with element values put
// into the payload at the last moment. Responses come back as raw trees: the host addressed
// its own endpoint.

#include <string>

#include "AnyCodable/JsonWriter.hpp"
#include "ElementsSupport.hpp"
#include "KorvaneElements/HttpMethod.hpp"
#include "KorvaneElements/KorvaneElements.hpp"
#include "KorvaneElements/KvDatadogLogger.hpp"
#include "platform/Fatal.hpp"
#include "platform/HttpSession.hpp"
#include "platform/Url.hpp"

namespace korvane::elements {

namespace {

constexpr std::string_view kJson = "application/json";
constexpr std::string_view kForm = "application/x-www-form-urlencoded";

void flattenInto(const anycodable::Value& value, const std::string& name, std::vector<std::string>& pairs);

void flattenMap(const anycodable::Map& map, const std::string& parent, std::vector<std::string>& pairs) {
    for (const auto& [key, value] : map) flattenInto(value, parent.empty() ? key : parent + "[" + key + "]", pairs);
}

// Nested keys in brackets, array positions as bracketed indices, no percent-encoding.
void flattenInto(const anycodable::Value& value, const std::string& name, std::vector<std::string>& pairs) {
    if (const auto* map = value.get<anycodable::Map>()) {
        flattenMap(*map, name, pairs);
    } else if (const auto* array = value.get<anycodable::Array>()) {
        for (std::size_t i = 0; i < array->size(); ++i)
            flattenInto((*array)[i], name + "[" + std::to_string(i) + "]", pairs);
    } else {
        pairs.push_back(name + "=" + anycodable::description(value));
    }
}

// The payload in the encoding `contentType` names exactly; absent when JSON can't hold it.
std::optional<std::string> encodeBody(const anycodable::Map& payload, std::string_view contentType) {
    if (contentType == kJson) {
        auto encoded = anycodable::toJson(anycodable::Value(payload));
        if (!encoded) return std::nullopt;
        return std::move(*encoded);
    }
    if (contentType == kForm) {
        std::vector<std::string> pairs;
        flattenMap(payload, "", pairs);
        std::string body;
        for (const auto& pair : pairs) {
            if (!body.empty()) body += "&";
            body += pair;
        }
        return body;
    }
    platform::fatalStop("Content-Type not supported");
}

void handleResponse(HttpMethod method, const std::string& url, const platform::HttpResult& result,
                    const KorvaneElements::HttpCompletion& completion) {
    const std::string name(caseName(method));
    if (!result) {
        logger().log("Invalid " + name + " request to " + url, "warn");
        completion(std::nullopt, std::nullopt, internal::failure(HttpClientError::invalidRequest));
        return;
    }
    platform::HttpResponse response = *result;
    auto parsed = internal::parseResponseObject(response.body);
    response.body.clear();
    if (!parsed) {
        logger().log("Unsuccessful " + name + " response from " + url, "warn", parsed.error().description());
        completion(std::move(response), std::nullopt, internal::failure(std::move(parsed.error())));
        return;
    }
    JSON tree = JSON::dictionary();
    internal::buildResponseTree(*parsed, tree, &internal::makeRawLeaf);
    logger().log("Successful " + name + " response from " + url, "info");
    completion(std::move(response), std::move(tree), std::nullopt);
}

void sendRequest(HttpMethod method, const std::string& url, std::optional<anycodable::Map> payload,
                 const std::optional<Config>& config, KorvaneElements::HttpCompletion completion) {
    auto parsedUrl = platform::Url::parse(url);
    if (!parsedUrl || !parsedUrl->scheme() || parsedUrl->scheme()->empty()) {
        completion(std::nullopt, std::nullopt, internal::failure(HttpClientError::invalidURL));
        return;
    }
    platform::HttpRequest request;
    request.url = url;
    request.method = std::string(rawValue(method));
    request.timeout = std::chrono::seconds(60);
    if (payload) {
        if (!KorvaneElements::replaceElementReferences(*payload, parsedUrl->string(), internal::newTraceId())) {
            completion(std::nullopt, std::nullopt, internal::failure(HttpClientError::invalidRequest));
            return;
        }
        std::string contentType(kJson);
        if (config) {
            if (auto it = config->headers.find("Content-Type"); it != config->headers.end()) contentType = it->second;
        }
        request.body = encodeBody(*payload, contentType).value_or(std::string());
    }
    if (config) {
        if (!config->headers.contains("Content-Type")) request.headers.set("Content-Type", std::string(kJson));
        for (const auto& [name, value] : config->headers) request.headers.set(name, value);
    }
    auto task = internal::httpSession()->dataTask(
        std::move(request), [method, url, completion = std::move(completion)](platform::HttpResult result) {
            handleResponse(method, url, result, completion);
        });
    task->resume();
}

void logAndSend(HttpMethod method, std::string url, std::optional<anycodable::Map> payload,
                std::optional<Config> config, KorvaneElements::HttpCompletion completion) {
    logger().log("Making " + std::string(rawValue(method)) + " request to " + url, "info");
    sendRequest(method, url, std::move(payload), config, std::move(completion));
}

}  // namespace

void KorvaneElements::post(std::string url, std::optional<anycodable::Map> payload, std::optional<Config> config,
                           HttpCompletion completion) {
    logAndSend(HttpMethod::post, std::move(url), std::move(payload), std::move(config), std::move(completion));
}

void KorvaneElements::put(std::string url, std::optional<anycodable::Map> payload, std::optional<Config> config,
                          HttpCompletion completion) {
    logAndSend(HttpMethod::put, std::move(url), std::move(payload), std::move(config), std::move(completion));
}

void KorvaneElements::patch(std::string url, std::optional<anycodable::Map> payload, std::optional<Config> config,
                            HttpCompletion completion) {
    logAndSend(HttpMethod::patch, std::move(url), std::move(payload), std::move(config), std::move(completion));
}

void KorvaneElements::get(std::string url, std::optional<Config> config, HttpCompletion completion) {
    logAndSend(HttpMethod::get, std::move(url), std::nullopt, std::move(config), std::move(completion));
}

void KorvaneElements::delete_(std::string url, std::optional<Config> config, HttpCompletion completion) {
    logAndSend(HttpMethod::delete_, std::move(url), std::nullopt, std::move(config), std::move(completion));
}

}  // namespace korvane::elements
