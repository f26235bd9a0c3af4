#pragma once
// Internal: the untyped machinery under URLSessionRequestBuilder<T>. Not for callers.
//
// Everything that does not depend on the result type lives here and in
// URLSessionImplementations.cpp, so that each builder instantiation stays small.

#include <cstdint>
#include <expected>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeinfo>

#include "AnyCodable/AnyCodable.hpp"
#include "Korvane/ErrorResponse.hpp"
#include "Korvane/FormDataEncoding.hpp"
#include "Korvane/HTTPMethod.hpp"
#include "Korvane/ParameterEncoding.hpp"
#include "Korvane/RequestBuilder.hpp"
#include "Korvane/RequestTask.hpp"
#include "Korvane/SynchronizedDictionary.hpp"
#include "platform/HttpSession.hpp"
#include "platform/Url.hpp"

namespace korvane::internal {

// A builder's answer to an authentication challenge of its own task.
using ChallengeCallback = std::function<platform::ChallengeAnswer(const platform::AuthChallenge&)>;

// The one session that all vault requests share, created on first use with the challenge
// delegate below installed, and never destroyed.
[[nodiscard]] platform::HttpSession& vaultSession();

// Per-task stores, keyed by task identifier, filled at start and emptied at clean-up.
[[nodiscard]] SynchronizedDictionary<std::uint64_t, ChallengeCallback>& challengeHandlerStore();
[[nodiscard]] SynchronizedDictionary<std::uint64_t, platform::HttpCredential>& credentialStore();

// The session delegate: the task's own handler; else a rejection after a failed attempt;
// else the task's credential; else default handling (this platform has no credential storage).
[[nodiscard]] platform::ChallengeAnswer answerChallenge(const platform::AuthChallenge& challenge);

// Whether `path` has a "." or ".." segment, percent-encoded or not. The transport sends paths
// as built, but a server would still resolve such a segment, so a path parameter like
// "a/../../applications" would reach another resource with the same key.
[[nodiscard]] bool hasDotSegment(std::string_view path);

// Stops the process on a method text that is not an HTTPMethod.
[[nodiscard]] HTTPMethod httpMethodOrStop(const std::string& text);

// GET and HEAD take URLEncoding; other methods choose by the exact "Content-Type" of
// `headers` (default "application/json"); any other value stops the process.
[[nodiscard]] std::unique_ptr<ParameterEncoding> encodingOrStop(
    HTTPMethod method, const HeaderMap& headers, FormDataEncoding::ContentTypeForFormPart contentTypeForFormPart);

// One finished exchange as the processing steps see it: the response's bytes are in `data`.
struct Exchange {
    std::optional<std::string> data;
    std::optional<platform::HttpResponse> response;
    std::optional<platform::HttpError> error;
};

struct TaskStart {
    platform::HttpSession* session = nullptr;
    platform::HttpRequest request;
    std::optional<platform::HttpCredential> credential;
    ChallengeCallback challengeHandler;
    ProgressCallback onProgressReady;
    std::shared_ptr<RequestTask> requestTask;
};

// Makes the data task, tells `onProgressReady`, fills the stores, resumes the task and only
// then stores it in the request task. `finished` runs on the session's delegate queue with the
// exchange and the clean-up action that empties the stores for this task.
void startTask(TaskStart start, std::function<void(Exchange, std::function<void()>)> finished);

// The common checks: transport error (-1), no response (-2), status outside the success range.
[[nodiscard]] std::optional<ErrorResponse> responseFailure(const std::optional<std::string>& data,
                                                           const std::optional<platform::HttpResponse>& response,
                                                           const std::optional<platform::HttpError>& error);

// The data as text, or "" when absent or not valid UTF-8.
[[nodiscard]] std::string utf8OrEmpty(const std::optional<std::string>& data);

// Types that a nil literal makes (an optional; AnyCodable, whose nil is the empty value).
template <class T>
inline constexpr bool isOptional = false;
template <class T>
inline constexpr bool isOptional<std::optional<T>> = true;

template <class T>
concept MadeFromNilLiteral =
    isOptional<T> || std::is_same_v<T, anycodable::AnyCodable> || std::is_same_v<T, anycodable::AnyEncodable>;

template <MadeFromNilLiteral T>
[[nodiscard]] T nilLiteral() {
    if constexpr (isOptional<T>) {
        return std::nullopt;
    } else {
        return T(nullptr);
    }
}

// The text after "filename=" in the first ";"-separated piece that holds it, with every
// "filename=" and double quote removed and whitespace trimmed; absent without such a piece.
[[nodiscard]] std::optional<std::string> fileNameFromContentDisposition(const std::optional<std::string>& value);

// The type's name without namespaces, for the fatal stop of unsupported response types.
[[nodiscard]] std::string typeName(const std::type_info& type);

// A download name that may go into a path: `name` unless it is absent, empty after trimming,
// or holds a path separator, "..", or a NUL; then "tmp.Korvane." + a fresh UUID.
[[nodiscard]] std::string safeDownloadName(const std::optional<std::string>& name);

// Writes `data` atomically to the caches directory joined with `relativePath`, creating the
// parent directories. A path that leaves the caches directory fails with requestMissingPath.
[[nodiscard]] std::expected<std::filesystem::path, UnderlyingError> storeDownload(const std::string& relativePath,
                                                                                  const std::string& data);

}  // namespace korvane::internal
