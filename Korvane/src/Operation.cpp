#include "Korvane/Operation.hpp"

#include "platform/Url.hpp"

namespace korvane::internal {

void RequestParts::setPath(std::string_view name, const anycodable::Value& value) {
    const std::string placeholder = "{" + std::string(name) + "}";
    const std::string text =
        platform::percentEncode(APIHelper::text(APIHelper::mapValueToPathItem(value)), platform::UrlCharacterSet::path);
    for (std::size_t at = path_.find(placeholder); at != std::string::npos;
         at = path_.find(placeholder, at + text.size())) {
        path_.replace(at, placeholder.size(), text);
    }
}

void RequestParts::addQuery(std::string_view key, anycodable::Value value, bool isExplode) {
    hasQuery_ = true;
    query_.emplace_back(std::string(key), QueryParameter{std::move(value), isExplode});
}

RequestBuilderArgs RequestParts::finish(HTTPMethod method) && {
    std::string urlString = KorvaneAPI::basePath() + path_;
    if (hasQuery_) {
        // A URL that doesn't parse goes out as it is, without its query: execute then reports
        // it as a request that can't be built.
        if (auto components = platform::Url::parse(urlString)) {
            components->setQueryItems(APIHelper::mapValuesToQueryItems(query_));
            urlString = components->string();
        }
    }
    return RequestBuilderArgs{std::string(rawValue(method)), std::move(urlString), std::move(parameters_),
                              APIHelper::rejectNilHeaders(Parameters()), true};
}

}  // namespace korvane::internal
