// The untyped half of request execution: the shared session and its challenge delegate, the
// per-task stores, the choice of encoding, the response checks and the download store.

#include <cxxabi.h>

#include <atomic>
#include <cstdlib>
#include <fstream>
#include <system_error>

#include "Korvane/Configuration.hpp"
#include "Korvane/FatalError.hpp"
#include "Korvane/FormURLEncoding.hpp"
#include "Korvane/JSONDataEncoding.hpp"
#include "Korvane/URLEncoding.hpp"
#include "Korvane/internal/Execution.hpp"
#include "platform/CurlSession.hpp"
#include "platform/DeviceInfo.hpp"
#include "platform/Text.hpp"
#include "platform/Url.hpp"
#include "platform/Uuid.hpp"

namespace korvane::internal {
namespace {

// Holds the task identifier from the moment the task exists; read by the clean-up action,
// which may run on another thread.
struct IdentifierBox {
    std::atomic<bool> known{false};
    std::atomic<std::uint64_t> value{0};
};

}  // namespace

platform::HttpSession& vaultSession() {
    // Never destroyed: tasks may still be running while statics are torn down at exit.
    static platform::HttpSession* const session = [] {
        auto* created = new platform::CurlSession();
        created->setChallengeHandler(
            [](const platform::AuthChallenge& challenge) { return answerChallenge(challenge); });
        return created;
    }();
    return *session;
}

SynchronizedDictionary<std::uint64_t, ChallengeCallback>& challengeHandlerStore() {
    static auto* const store = new SynchronizedDictionary<std::uint64_t, ChallengeCallback>();
    return *store;
}

SynchronizedDictionary<std::uint64_t, platform::HttpCredential>& credentialStore() {
    static auto* const store = new SynchronizedDictionary<std::uint64_t, platform::HttpCredential>();
    return *store;
}

platform::ChallengeAnswer answerChallenge(const platform::AuthChallenge& challenge) {
    if (auto handler = challengeHandlerStore().get(challenge.taskIdentifier)) return (*handler)(challenge);
    if (challenge.previousFailureCount > 0) {
        return {platform::ChallengeDisposition::rejectProtectionSpace, std::nullopt};
    }
    if (auto credential = credentialStore().get(challenge.taskIdentifier)) {
        return {platform::ChallengeDisposition::useCredential, std::move(credential)};
    }
    return {platform::ChallengeDisposition::performDefaultHandling, std::nullopt};
}

HTTPMethod httpMethodOrStop(const std::string& text) {
    auto method = httpMethodFromRawValue(text);
    if (!method) fatalError("Unsupported Http method - " + text);
    return *method;
}

std::unique_ptr<ParameterEncoding> encodingOrStop(HTTPMethod method, const HeaderMap& headers,
                                                  FormDataEncoding::ContentTypeForFormPart contentTypeForFormPart) {
    if (method == HTTPMethod::get || method == HTTPMethod::head) return std::make_unique<URLEncoding>();
    auto found = headers.find("Content-Type");
    const std::string contentType = found != headers.end() ? found->second : "application/json";
    // Whole-value comparison on purpose: a charset or boundary suffix is not accepted here.
    if (contentType == "application/json") return std::make_unique<JSONDataEncoding>();
    if (contentType == "multipart/form-data")
        return std::make_unique<FormDataEncoding>(std::move(contentTypeForFormPart));
    if (contentType == "application/x-www-form-urlencoded") return std::make_unique<FormURLEncoding>();
    fatalError("Unsupported Media Type - " + contentType);
}

void startTask(TaskStart start, std::function<void(Exchange, std::function<void()>)> finished) {
    auto box = std::make_shared<IdentifierBox>();
    std::function<void()> cleanUp = [box] {
        if (!box->known.load(std::memory_order_acquire)) return;
        const std::uint64_t id = box->value.load(std::memory_order_relaxed);
        challengeHandlerStore().set(id, std::nullopt);
        credentialStore().set(id, std::nullopt);
    };
    auto task = start.session->dataTask(std::move(start.request),
                                        [finished = std::move(finished), cleanUp](platform::HttpResult result) {
                                            Exchange exchange;
                                            if (result) {
                                                exchange.data = std::move(result->body);
                                                result->body.clear();
                                                exchange.response = std::move(*result);
                                            } else {
                                                exchange.error = std::move(result.error());
                                            }
                                            finished(std::move(exchange), cleanUp);
                                        });
    if (start.onProgressReady) start.onProgressReady(task->progress());
    const std::uint64_t id = task->taskIdentifier();
    box->value.store(id, std::memory_order_relaxed);
    box->known.store(true, std::memory_order_release);
    challengeHandlerStore().set(id, start.challengeHandler ? std::optional(start.challengeHandler) : std::nullopt);
    credentialStore().set(id, start.credential);
    task->resume();
    start.requestTask->setTask(std::move(task));
}

std::optional<ErrorResponse> responseFailure(const std::optional<std::string>& data,
                                             const std::optional<platform::HttpResponse>& response,
                                             const std::optional<platform::HttpError>& error) {
    if (error) return ErrorResponse{-1, data, response, *error};
    if (!response) return ErrorResponse{-2, data, response, DecodableRequestBuilderError::nilHTTPResponse()};
    if (!Configuration::successfulStatusCodeRange().contains(response->status)) {
        return ErrorResponse{response->status, data, response,
                             DecodableRequestBuilderError::unsuccessfulHTTPStatusCode()};
    }
    return std::nullopt;
}

std::string utf8OrEmpty(const std::optional<std::string>& data) {
    if (!data || !platform::isValidUtf8(*data)) return {};
    return *data;
}

std::string typeName(const std::type_info& type) {
    int status = 0;
    char* demangled = abi::__cxa_demangle(type.name(), nullptr, nullptr, &status);
    std::string name = status == 0 && demangled ? demangled : type.name();
    std::free(demangled);
    for (std::string_view prefix : {"korvane::", "anycodable::", "platform::", "std::"}) {
        for (std::size_t at = name.find(prefix); at != std::string::npos; at = name.find(prefix, at)) {
            name.erase(at, prefix.size());
        }
    }
    return name;
}

std::optional<std::string> fileNameFromContentDisposition(const std::optional<std::string>& value) {
    if (!value) return std::nullopt;
    static constexpr std::string_view kMarker = "filename=";
    std::string_view rest = *value;
    while (true) {
        const std::size_t end = rest.find(';');
        std::string piece(rest.substr(0, end));
        if (piece.find(kMarker) != std::string::npos) {
            for (std::size_t at = piece.find(kMarker); at != std::string::npos; at = piece.find(kMarker, at)) {
                piece.erase(at, kMarker.size());
            }
            std::erase(piece, '"');
            const char* whitespace = " \t\n\r\v\f";
            const std::size_t first = piece.find_first_not_of(whitespace);
            if (first == std::string::npos) return std::string();
            return piece.substr(first, piece.find_last_not_of(whitespace) - first + 1);
        }
        if (end == std::string_view::npos) return std::nullopt;
        rest.remove_prefix(end + 1);
    }
}

std::string safeDownloadName(const std::optional<std::string>& name) {
    const bool usable = name && !name->empty() && *name != "." && name->find('/') == std::string::npos &&
                        name->find('\\') == std::string::npos && name->find("..") == std::string::npos &&
                        name->find('\0') == std::string::npos &&
                        name->find_first_not_of(" \t\n\r\v\f") != std::string::npos;
    if (usable) return *name;
    return "tmp.Korvane." + platform::Uuid::random().string();
}

std::expected<std::filesystem::path, UnderlyingError> storeDownload(const std::string& relativePath,
                                                                    const std::string& data) {
    namespace fs = std::filesystem;
    const fs::path root = platform::cachesDirectory().lexically_normal();
    // Joined as text, so that an empty request path ("/name") stays below the root.
    fs::path target = root;
    target += "/";
    target += relativePath;
    target = target.lexically_normal();
    const fs::path inside = target.lexically_relative(root);
    if (inside.empty() || *inside.begin() == ".." || *inside.begin() == "." || !target.has_filename()) {
        return std::unexpected(UnderlyingError(DownloadException::requestMissingPath));
    }
    std::error_code error;
    fs::create_directories(target.parent_path(), error);
    if (error) return std::unexpected(UnderlyingError(error));
    // Atomic: the whole file appears under its name, or nothing does.
    fs::path temporary = target.parent_path() / (".tmp.Korvane." + platform::Uuid::random().string());
    {
        std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
        out.write(data.data(), static_cast<std::streamsize>(data.size()));
        out.close();
        if (!out) {
            fs::remove(temporary, error);
            return std::unexpected(UnderlyingError(std::make_error_code(std::errc::io_error)));
        }
    }
    fs::rename(temporary, target, error);
    if (error) {
        std::error_code ignored;
        fs::remove(temporary, ignored);
        return std::unexpected(UnderlyingError(error));
    }
    return target;
}

bool hasDotSegment(std::string_view path) {
    while (!path.empty()) {
        const auto slash = path.find('/');
        const auto segment = path.substr(0, slash);
        const auto decoded = platform::percentDecode(segment);
        if (decoded && (*decoded == "." || *decoded == "..")) return true;
        if (slash == std::string_view::npos) break;
        path.remove_prefix(slash + 1);
    }
    return false;
}

}  // namespace korvane::internal
