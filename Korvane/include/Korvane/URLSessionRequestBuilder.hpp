#pragma once
// URLSessionRequestBuilder<T>: sends a builder's request over the vault session.
// URLSessionDecodableRequestBuilder<T>: the same, and turns the body into a T.
//
// `execute`:
//  1. The method text must be an HTTPMethod, else the process stops with
//     "Unsupported Http method - <text>".
//  2. The encoding: URLEncoding for GET and HEAD; otherwise `headers["Content-Type"]` (exactly
//     that key, default "application/json") compared whole: application/json,
//     multipart/form-data or application/x-www-form-urlencoded. Anything else, a charset
//     suffix included, stops the process with "Unsupported Media Type - <value>".
//  3. A request that can't be built (bad URL, encoding failure) completes with code 415 on the
//     queue; nothing is sent.
//  4. Otherwise the task starts; on its end the completion is posted to the queue, or, with a
//     retry hook, the hook decides: true runs `execute` again (no limit, no delay), false
//     delivers as without a hook.
//
// Response processing, after the common checks of ErrorResponse.hpp:
//  - this class: T must be Void (success with an empty body); any other T stops the process
//    with "Unsupported Response Body Type - <T>".
//  - the decoding class, by T: std::string (the body as UTF-8, "" when it isn't), platform::Url
//    (the body stored as a file in the caches directory, see `download`), Void, anycodable::Data
//    (the bytes as they came), anything else decoded with CodableHelper. An empty body gives
//    the nil value for a T that has one (an optional: absent; AnyCodable: the empty value)
//    and `emptyDataResponse` otherwise.
//
// Thread safety: as RequestBuilder. The hooks run on the session's delegate queue (the
// challenge handler and the retry hook); the retry decision may be called from any thread.

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>

#include "AnyCodable/Value.hpp"
#include "Korvane/CodableHelper.hpp"
#include "Korvane/Configuration.hpp"
#include "Korvane/FatalError.hpp"
#include "Korvane/RequestBuilder.hpp"
#include "Korvane/internal/Execution.hpp"
#include "platform/Url.hpp"

namespace korvane {

using ChallengeCallback = internal::ChallengeCallback;
// Called with what the attempt received and a decision: true retries, false delivers.
using RetryHook =
    std::function<void(const std::optional<std::string>& data, const std::optional<platform::HttpResponse>& response,
                       const std::optional<platform::HttpError>& error, std::function<void(bool)> decide)>;

template <class T>
class URLSessionRequestBuilder : public RequestBuilder<T> {
public:
    using typename RequestBuilder<T>::Completion;
    using typename RequestBuilder<T>::Result;
    using RequestBuilder<T>::execute;

    // `session` null: the shared vault session.
    explicit URLSessionRequestBuilder(RequestBuilderArgs args, platform::HttpSession* session = nullptr)
        : RequestBuilder<T>(std::move(args)), session_(session) {}

    // Answers authentication challenges of this builder's tasks; absent by default.
    ChallengeCallback taskDidReceiveChallenge;
    RetryHook taskCompletionShouldRetry;

    std::shared_ptr<RequestTask> execute(std::shared_ptr<platform::Executor> apiResponseQueue,
                                         Completion completion) override {
        platform::HttpSession& session = createURLSession();
        HTTPMethod method = internal::httpMethodOrStop(this->method());
        auto encoding = internal::encodingOrStop(
            method, this->headers, [this](const platform::Url& fileUrl) { return contentTypeForFormPart(fileUrl); });
        auto request = createURLRequest(session, method, *encoding, this->headers);
        if (!request) {
            apiResponseQueue->post([completion, error = std::move(request.error())]() mutable {
                completion(platform::failure(ErrorResponse{415, std::nullopt, std::nullopt, std::move(error)}));
            });
            return this->requestTask();
        }
        auto self = std::static_pointer_cast<URLSessionRequestBuilder>(this->shared_from_this());
        auto sent = std::make_shared<const platform::HttpRequest>(*request);
        internal::TaskStart start{
            &session,           std::move(*request), this->credential, taskDidReceiveChallenge, this->onProgressReady,
            this->requestTask()};
        internal::startTask(std::move(start), [self, sent, apiResponseQueue, completion](
                                                  internal::Exchange exchange, std::function<void()> cleanUp) {
            auto shared = std::make_shared<internal::Exchange>(std::move(exchange));
            auto deliver = [self, sent, apiResponseQueue, completion, cleanUp, shared] {
                apiResponseQueue->post([self, sent, completion, cleanUp, shared] {
                    self->processRequestResponse(*sent, shared->data, shared->response, shared->error, completion);
                    cleanUp();
                });
            };
            if (!self->taskCompletionShouldRetry) {
                deliver();
                return;
            }
            self->taskCompletionShouldRetry(shared->data, shared->response, shared->error,
                                            [self, apiResponseQueue, completion, cleanUp, deliver](bool retry) {
                                                if (!retry) {
                                                    deliver();
                                                    return;
                                                }
                                                cleanUp();
                                                self->execute(apiResponseQueue, completion);
                                            });
        });
        return this->requestTask();
    }

    virtual platform::HttpSession& createURLSession() { return session_ ? *session_ : internal::vaultSession(); }

    // The content type of a file part; absent: from the file name's extension.
    virtual std::optional<std::string> contentTypeForFormPart(const platform::Url& fileURL) {
        (void)fileURL;
        return std::nullopt;
    }

    // The request with its headers (`headers`, then buildHeaders() on top) and its encoded
    // parameters. A URL string that doesn't parse, or whose path has a "." or ".." segment,
    // fails with DownloadException::requestMissingURL.
    virtual std::expected<platform::HttpRequest, UnderlyingError> createURLRequest(platform::HttpSession& urlSession,
                                                                                   HTTPMethod method,
                                                                                   const ParameterEncoding& encoding,
                                                                                   const HeaderMap& headers) {
        (void)urlSession;
        auto url = platform::Url::parse(this->URLString());
        if (!url || internal::hasDotSegment(url->percentEncodedPath())) {
            return std::unexpected(UnderlyingError(DownloadException::requestMissingURL));
        }
        platform::HttpRequest request;
        request.method = std::string(rawValue(method));
        request.url = this->URLString();
        request.timeout = std::chrono::seconds(60);
        for (const auto& [name, value] : headers) request.headers.set(name, value);
        for (const auto& [name, value] : buildHeaders()) request.headers.set(name, value);
        auto encoded = encoding.encode(std::move(request), this->parameters());
        if (!encoded) return std::unexpected(UnderlyingError(std::move(encoded.error())));
        return std::move(*encoded);
    }

    virtual void processRequestResponse(const platform::HttpRequest& urlRequest, const std::optional<std::string>& data,
                                        const std::optional<platform::HttpResponse>& response,
                                        const std::optional<platform::HttpError>& error, const Completion& completion) {
        (void)urlRequest;
        if (auto failure = internal::responseFailure(data, response, error)) {
            completion(platform::failure(std::move(*failure)));
            return;
        }
        if constexpr (std::is_same_v<T, Void>) {
            completion(Response<T>(*response, Void{}));
        } else {
            fatalError("Unsupported Response Body Type - " + internal::typeName(typeid(T)));
        }
    }

    // `headers`, then KorvaneAPI::customHeaders() on top.
    virtual HeaderMap buildHeaders() {
        HeaderMap built = this->headers;
        for (auto& [name, value] : KorvaneAPI::customHeaders()) built.insert_or_assign(name, value);
        return built;
    }

    // The first ";"-separated piece holding "filename=", without that text, without double
    // quotes, trimmed. Not sanitised here: the download path does that.
    virtual std::optional<std::string> getFileName(const std::optional<std::string>& contentDisposition) {
        return internal::fileNameFromContentDisposition(contentDisposition);
    }

    // The URL's decoded path without its leading "/".
    virtual std::expected<std::string, DownloadException> getPath(const platform::Url& url) {
        std::string path = url.path();
        if (!path.empty() && path.front() == '/') path.erase(0, 1);
        return path;
    }

    virtual std::expected<platform::Url, DownloadException> getURL(const platform::HttpRequest& request) {
        auto url = platform::Url::parse(request.url);
        if (!url) return std::unexpected(DownloadException::requestMissingURL);
        return *url;
    }

protected:
    // The body stored below the caches directory, at the request's path plus "/" plus the
    // name from "Content-Disposition" (or "tmp.Korvane." + UUID). Failures are code 400.
    platform::Result<platform::Url, ErrorResponse> download(const platform::HttpRequest& urlRequest,
                                                            const std::optional<std::string>& data,
                                                            const platform::HttpResponse& response) {
        auto fail = [&](UnderlyingError error) {
            return platform::failure(ErrorResponse{400, data, response, std::move(error)});
        };
        if (!data) return fail(DownloadException::responseDataMissing);
        auto url = getURL(urlRequest);
        if (!url) return fail(url.error());
        auto path = getPath(*url);
        if (!path) return fail(path.error());
        std::string name = internal::safeDownloadName(getFileName(response.headers.get("Content-Disposition")));
        auto stored = internal::storeDownload(*path + "/" + name, *data);
        if (!stored) return fail(std::move(stored.error()));
        return platform::Url::fileUrl(*stored);
    }

private:
    platform::HttpSession* session_;
};

template <class T>
class URLSessionDecodableRequestBuilder : public URLSessionRequestBuilder<T> {
public:
    using typename URLSessionRequestBuilder<T>::Completion;
    using URLSessionRequestBuilder<T>::URLSessionRequestBuilder;

    void processRequestResponse(const platform::HttpRequest& urlRequest, const std::optional<std::string>& data,
                                const std::optional<platform::HttpResponse>& response,
                                const std::optional<platform::HttpError>& error,
                                const Completion& completion) override {
        if (auto failure = internal::responseFailure(data, response, error)) {
            completion(platform::failure(std::move(*failure)));
            return;
        }
        if constexpr (std::is_same_v<T, std::string>) {
            completion(Response<T>(*response, internal::utf8OrEmpty(data)));
        } else if constexpr (std::is_same_v<T, platform::Url>) {
            auto stored = this->download(urlRequest, data, *response);
            if (!stored) {
                completion(platform::failure(std::move(stored.error())));
            } else {
                completion(Response<T>(*response, std::move(*stored)));
            }
        } else if constexpr (std::is_same_v<T, Void>) {
            completion(Response<T>(*response, Void{}));
        } else if constexpr (std::is_same_v<T, anycodable::Data>) {
            completion(Response<T>(*response, anycodable::Data{data.value_or(std::string())}));
        } else {
            if (!data || data->empty()) {
                if constexpr (internal::MadeFromNilLiteral<T>) {
                    completion(Response<T>(*response, internal::nilLiteral<T>()));
                } else {
                    completion(platform::failure(ErrorResponse{response->status, std::nullopt, response,
                                                               DecodableRequestBuilderError::emptyDataResponse()}));
                }
                return;
            }
            auto decoded = CodableHelper::decode<T>(*data);
            if (!decoded) {
                completion(
                    platform::failure(ErrorResponse{response->status, data, response, std::move(decoded.error())}));
                return;
            }
            completion(Response<T>(*response, std::move(*decoded)));
        }
    }
};

}  // namespace korvane
