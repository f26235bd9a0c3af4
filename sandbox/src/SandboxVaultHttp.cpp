#include "SandboxVaultHttp.hpp"

#include "AnyCodable/JsonWriter.hpp"
#include "platform/Url.hpp"

namespace tovi::sandbox {

using platform::testing::LoopbackResponse;

LoopbackResponse jsonAnswer(int status, const anycodable::Value& body) {
    LoopbackResponse response;
    response.status = status;
    response.headers.set("Content-Type", "application/json");
    response.body = anycodable::toJson(body).value_or("{}");
    return response;
}

LoopbackResponse problemAnswer(int status, std::string title, const std::vector<VaultProblem>& problems) {
    anycodable::Map body;
    body.set("title", std::move(title));
    body.set("status", status);
    if (!problems.empty()) {
        anycodable::Map errors;
        for (const auto& p : problems) {
            anycodable::Value* messages = errors.find(p.field);
            if (!messages) {
                errors.set(p.field, anycodable::Array{});
                messages = errors.find(p.field);
            }
            messages->get<anycodable::Array>()->emplace_back(p.message);
        }
        body.set("errors", std::move(errors));
    }
    return jsonAnswer(status, anycodable::Value(std::move(body)));
}

LoopbackResponse refusalAnswer(int status) {
    switch (status) {
        case 400:
            return problemAnswer(status, "The request is malformed");
        case 404:
            return problemAnswer(status, "Not Found");
        case 413:
            return problemAnswer(status, "The body is too large");
        case 414:
            return problemAnswer(status, "The URI is too long");
        case 503:
            return problemAnswer(status, "The sandbox vault is stopping");
        default:
            return problemAnswer(status, "The request was refused");
    }
}

namespace {

bool isLoopbackHttp(const platform::Url& url) {
    if (url.scheme() != "http") return false;
    const auto& host = url.percentEncodedHost();
    return host == "127.0.0.1" || host == "localhost";
}

}  // namespace

std::optional<std::string> proxyTarget(std::string_view proxyUrl, std::string_view subPath, std::string_view rawQuery) {
    const auto base = platform::Url::parse(proxyUrl);
    if (!base || !isLoopbackHttp(*base)) return std::nullopt;
    // Rebuilt from components: the request's path can only add path segments, whatever it holds
    // ("@", ":", "?", "#" or escapes of them).
    std::string path = base->percentEncodedPath();
    if (path.ends_with('/') && subPath.starts_with('/')) path.pop_back();
    path += platform::percentEncode(subPath, platform::UrlCharacterSet::path);
    if (!path.starts_with('/')) path.insert(0, "/");
    std::string text = "http://" + *base->percentEncodedHost();
    if (base->port()) text += ":" + std::to_string(*base->port());
    text += path;
    if (!rawQuery.empty()) text += "?" + std::string(rawQuery);
    const auto built = platform::Url::parse(text);
    if (!built || !isLoopbackHttp(*built) || built->percentEncodedHost() != base->percentEncodedHost() ||
        built->port() != base->port()) {
        return std::nullopt;
    }
    return built->string();
}

}  // namespace tovi::sandbox
