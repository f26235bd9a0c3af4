#include "Korvane/RequestBuilder.hpp"

#include "Korvane/Response.hpp"

namespace korvane {

HeaderMap headerFields(const platform::HttpHeaders& headers) {
    HeaderMap fields;
    for (const auto& [name, value] : headers) {
        auto it = fields.end();
        for (auto candidate = fields.begin(); candidate != fields.end(); ++candidate) {
            if (platform::equalsIgnoringCase(candidate->first, name)) {
                it = candidate;
                break;
            }
        }
        if (it == fields.end()) {
            fields.emplace(name, value);
        } else {
            it->second += ", " + value;
        }
    }
    return fields;
}

RequestBuilderBase::RequestBuilderBase(RequestBuilderArgs args)
    : headers(std::move(args.headers)),
      parameters_(std::move(args.parameters)),
      method_(std::move(args.method)),
      URLString_(std::move(args.URLString)),
      requestTask_(std::make_shared<RequestTask>()),
      requiresAuthentication_(args.requiresAuthentication) {
    addHeadersBase(KorvaneAPI::customHeaders());
}

void RequestBuilderBase::addHeadersBase(const HeaderMap& added) {
    for (const auto& [name, value] : added) headers.insert_or_assign(name, value);
}

void RequestBuilderBase::addHeaderBase(const std::string& name, const std::string& value) {
    if (!value.empty()) headers.insert_or_assign(name, value);
}

}  // namespace korvane
