#pragma once
// Operation: one REST operation of the vault, declared once as a row, with both call forms
// derived from it.
//
// An API class lists its operations as rows (see TokensAPI.hpp):
//
//     static constexpr auto getById = operation<Token>(HTTPMethod::get, "/tokens/{id}", path("id"));
//
// and callers use the two forms:
//
//     auto builder = TokensAPI::getById.withRequestBuilder(id);       // builds, sends nothing
//     auto task = TokensAPI::getById(id, [](std::optional<Token> token, std::optional<ErrorResponse> error) {});
//     auto task = TokensAPI::getById(id, queue, completion);          // completion on `queue`
//
// The call form's parameters follow the row's parameter order; its completion runs on the
// queue given (default KorvaneAPI::apiResponseQueue()) with the body and no error, or no body
// and the ErrorResponse. An operation whose result is Void answers Void{} on success.
//
// Parameters of a row, in the order the caller passes them:
//   path("id")                      "{id}" in the template, replaced (everywhere) by the value's
//                                   text, percent-encoded with the URL path set ("/" stays)
//   query<T>("key")                 an optional value; absent contributes nothing, a
//                                   collection gives one item per element (the key repeated)
//   query<T>("key", notExploded)    a collection gives one item; a map is one item whose value
//                                   is its printed form, [AnyHashable("key"): "value"]
//   body<T>()                       the JSON body (T may be std::optional<...>)
//
// The builder: URL = KorvaneAPI::basePath() + path, query items in row order; parameters =
// the encoded body or absent; no headers of its own; requiresAuthentication true; made by
// KorvaneAPI::requestBuilderFactory() (getNonDecodableBuilder for Void, getBuilder otherwise).
//
// Thread safety: rows are constants; both forms may be called from any thread.

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "Korvane/APIHelper.hpp"
#include "Korvane/HTTPMethod.hpp"
#include "Korvane/JSONEncodable.hpp"
#include "Korvane/JSONEncodingHelper.hpp"
#include "Korvane/KorvaneAPI.hpp"
#include "Korvane/RequestBuilderFactory.hpp"

namespace korvane {

template <class T = std::string>
struct PathParam {
    using Type = T;
    std::string_view name;
};

template <class T>
struct QueryParam {
    using Type = std::optional<T>;
    std::string_view key;
    bool isExplode = true;
};

template <class T>
struct BodyParam {
    using Type = T;
};

inline constexpr bool notExploded = false;

template <class T = std::string>
[[nodiscard]] constexpr PathParam<T> path(std::string_view name) {
    return {name};
}
template <class T>
[[nodiscard]] constexpr QueryParam<T> query(std::string_view key, bool isExplode = true) {
    return {key, isExplode};
}
template <class T>
[[nodiscard]] constexpr BodyParam<T> body() {
    return {};
}

namespace internal {

// The untyped accumulation of one operation's request.
class RequestParts {
public:
    explicit RequestParts(std::string_view pathTemplate) : path_(pathTemplate) {}

    void setPath(std::string_view name, const anycodable::Value& value);
    void addQuery(std::string_view key, anycodable::Value value, bool isExplode);
    void setBody(std::optional<Parameters> parameters) { parameters_ = std::move(parameters); }

    [[nodiscard]] RequestBuilderArgs finish(HTTPMethod method) &&;

private:
    std::string path_;
    QueryParameters query_;
    bool hasQuery_ = false;
    std::optional<Parameters> parameters_;
};

template <class T>
void apply(RequestParts& parts, const PathParam<T>& param, const T& value) {
    parts.setPath(param.name, encodeToJSON(value));
}
template <class T>
void apply(RequestParts& parts, const QueryParam<T>& param, const std::optional<T>& value) {
    parts.addQuery(param.key, value ? encodeToJSON(*value) : anycodable::Value(), param.isExplode);
}
template <class T>
void apply(RequestParts& parts, const BodyParam<T>&, const T& value) {
    parts.setBody(JSONEncodingHelper::encodingParameters(value));
}

}  // namespace internal

template <class Result, class... Params>
class Operation {
public:
    using Completion = std::function<void(std::optional<Result>, std::optional<ErrorResponse>)>;

    constexpr Operation(HTTPMethod method, std::string_view pathTemplate, Params... params)
        : method_(method), pathTemplate_(pathTemplate), params_(params...) {}

    [[nodiscard]] std::shared_ptr<RequestBuilder<Result>> withRequestBuilder(typename Params::Type... args) const {
        internal::RequestParts parts(pathTemplate_);
        applyAll(parts, std::index_sequence_for<Params...>{}, args...);
        auto factory = KorvaneAPI::requestBuilderFactory();
        if constexpr (std::is_same_v<Result, Void>) {
            return factory->template getNonDecodableBuilder<Result>(std::move(parts).finish(method_));
        } else {
            return factory->template getBuilder<Result>(std::move(parts).finish(method_));
        }
    }

    std::shared_ptr<RequestTask> operator()(typename Params::Type... args, Completion completion) const {
        return (*this)(std::move(args)..., KorvaneAPI::apiResponseQueue(), std::move(completion));
    }

    std::shared_ptr<RequestTask> operator()(typename Params::Type... args,
                                            std::shared_ptr<platform::Executor> apiResponseQueue,
                                            Completion completion) const {
        return withRequestBuilder(std::move(args)...)
            ->execute(std::move(apiResponseQueue),
                      [completion = std::move(completion)](platform::Result<Response<Result>, ErrorResponse> result) {
                          if (result) {
                              completion(std::move(result->body), std::nullopt);
                          } else {
                              completion(std::nullopt, std::move(result.error()));
                          }
                      });
    }

    [[nodiscard]] constexpr HTTPMethod method() const { return method_; }
    [[nodiscard]] constexpr std::string_view pathTemplate() const { return pathTemplate_; }

private:
    template <std::size_t... I>
    void applyAll(internal::RequestParts& parts, std::index_sequence<I...>,
                  const typename Params::Type&... args) const {
        (internal::apply(parts, std::get<I>(params_), args), ...);
    }

    HTTPMethod method_;
    std::string_view pathTemplate_;
    std::tuple<Params...> params_;
};

// A row: `operation<Result>(method, pathTemplate, parameters...)`.
template <class Result, class... Params>
[[nodiscard]] constexpr Operation<Result, Params...> operation(HTTPMethod method, std::string_view pathTemplate,
                                                               Params... params) {
    return Operation<Result, Params...>(method, pathTemplate, params...);
}

}  // namespace korvane
