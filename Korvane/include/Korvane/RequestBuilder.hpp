#pragma once
// RequestBuilder<T>: one vault request, built by an operation and sent by `execute`.
//
// Usage (what the element library does):
//     auto builder = TokensAPI::getById.withRequestBuilder(id);   // builds, sends nothing
//     builder->addHeader("KV-API-KEY", key).addHeader("KV-TRACE-ID", traceId);
//     builder->execute([](platform::Result<Response<Token>, ErrorResponse> result) { ... });
//
// `execute` returns at once; the completion runs exactly once on the given queue (default
// KorvaneAPI::apiResponseQueue()) unless a retry hook keeps retrying. The base class sends
// nothing: URLSessionRequestBuilder<T> does the work. Builders are always held by shared_ptr:
// an execution keeps its builder alive until the completion has run.
//
// Headers: the constructor's headers, then KorvaneAPI::customHeaders() on top. `addHeader`
// with an empty value changes nothing (it never deletes).
//
// Thread safety: a builder is configured from one thread at a time; `execute` and the
// returned task's `cancel` may be called from any thread.

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Korvane/ErrorResponse.hpp"
#include "Korvane/KorvaneAPI.hpp"
#include "Korvane/ParameterEncoding.hpp"
#include "Korvane/RequestTask.hpp"
#include "Korvane/Response.hpp"
#include "platform/Executor.hpp"
#include "platform/HttpSession.hpp"
#include "platform/Result.hpp"

namespace korvane {

// What an operation hands to the factory.
struct RequestBuilderArgs {
    std::string method;
    // Absolute URL with its query already in place.
    std::string URLString;
    std::optional<Parameters> parameters;
    HeaderMap headers;
    bool requiresAuthentication = true;
};

using ProgressCallback = std::function<void(std::shared_ptr<const platform::HttpProgress>)>;

// The untyped part of every builder.
class RequestBuilderBase {
public:
    explicit RequestBuilderBase(RequestBuilderArgs args);
    virtual ~RequestBuilderBase() = default;
    RequestBuilderBase(const RequestBuilderBase&) = delete;
    RequestBuilderBase& operator=(const RequestBuilderBase&) = delete;

    // Per-request credential, handed to the session's credential store at execute.
    std::optional<platform::HttpCredential> credential;
    HeaderMap headers;
    // Told the task's progress once, before the task starts.
    ProgressCallback onProgressReady;

    [[nodiscard]] const std::optional<Parameters>& parameters() const { return parameters_; }
    [[nodiscard]] const std::string& method() const { return method_; }
    [[nodiscard]] const std::string& URLString() const { return URLString_; }
    [[nodiscard]] const std::shared_ptr<RequestTask>& requestTask() const { return requestTask_; }
    // Carried for callers; the runtime never reads it.
    [[nodiscard]] bool requiresAuthentication() const { return requiresAuthentication_; }

protected:
    void addHeadersBase(const HeaderMap& added);
    void addHeaderBase(const std::string& name, const std::string& value);

private:
    std::optional<Parameters> parameters_;
    std::string method_;
    std::string URLString_;
    std::shared_ptr<RequestTask> requestTask_;
    bool requiresAuthentication_;
};

template <class T>
class RequestBuilder : public RequestBuilderBase, public std::enable_shared_from_this<RequestBuilder<T>> {
public:
    using Result = platform::Result<Response<T>, ErrorResponse>;
    using Completion = std::function<void(Result)>;

    explicit RequestBuilder(RequestBuilderArgs args) : RequestBuilderBase(std::move(args)) {}

    // Copies each pair, overwriting.
    RequestBuilder& addHeaders(const HeaderMap& added) {
        addHeadersBase(added);
        return *this;
    }
    // Stores the pair only when `value` is not empty.
    RequestBuilder& addHeader(const std::string& name, const std::string& value) {
        addHeaderBase(name, value);
        return *this;
    }
    // Copies KorvaneAPI::credential() into `credential`.
    RequestBuilder& addCredential() {
        credential = KorvaneAPI::credential();
        return *this;
    }

    // The base class sends nothing and only answers the task.
    virtual std::shared_ptr<RequestTask> execute(std::shared_ptr<platform::Executor> apiResponseQueue,
                                                 Completion completion) {
        (void)apiResponseQueue;
        (void)completion;
        return requestTask();
    }
    std::shared_ptr<RequestTask> execute(Completion completion) {
        return execute(KorvaneAPI::apiResponseQueue(), std::move(completion));
    }
};

}  // namespace korvane
