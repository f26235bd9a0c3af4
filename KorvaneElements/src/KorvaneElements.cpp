// The vault calls of the element library: tokenize, token creation and token reading, each
// labelled, traced and logged the same way.

#include "KorvaneElements/KorvaneElements.hpp"

#include <expected>
#include <mutex>
#include <type_traits>
#include <variant>

#include "ElementsSupport.hpp"
#include "Korvane/KorvaneAPI.hpp"
#include "Korvane/SessionsAPI.hpp"
#include "Korvane/TokenizeAPI.hpp"
#include "Korvane/TokensAPI.hpp"
#include "platform/Fatal.hpp"
#include "platform/HttpSession.hpp"

namespace korvane::elements {

namespace {

struct Settings {
    std::mutex mutex;
    std::string apiKey;
    std::string basePath{korvane::KorvaneAPI::kDefaultBasePath};
    std::shared_ptr<platform::HttpSession> session;
};

Settings& settings() {
    static Settings instance;
    return instance;
}

// Every setting is read and written whole under the one lock, from any thread.
template <class T>
T readSetting(T Settings::*field) {
    std::lock_guard lock(settings().mutex);
    return settings().*field;
}

template <class T>
void writeSetting(T Settings::*field, T value) {
    std::lock_guard lock(settings().mutex);
    settings().*field = std::move(value);
}

constexpr std::string_view kTokenizeEndpoint = "POST /tokenize";
constexpr std::string_view kCreateTokenEndpoint = "POST /tokens";
constexpr std::string_view kCreateSessionEndpoint = "POST /sessions";
constexpr std::string_view kGetTokenEndpoint = "GET /tokens/id";

// The key of a call: its own, else the static one. Sent even when empty, which `addHeader`
// would skip.
template <class T>
void addElementHeaders(korvane::RequestBuilder<T>& builder, const std::optional<std::string>& apiKey,
                       const std::string& traceId) {
    builder.addHeaders({{"User-Agent", "Korvane iOS Elements"},
                        {"KV-API-KEY", apiKey.value_or(KorvaneElements::apiKey())},
                        {"KV-TRACE-ID", traceId}});
}

// Steps 4 to 7 of every vault call: base path, builder, headers, execution. `onSuccess` turns
// the response body into what the completion receives, or into a decoding failure when the
// answer decoded but is not what the call needs.
template <class T, class Out, class Build, class Convert>
void executeVaultCall(std::string_view endpoint, const std::string& traceId, const std::optional<std::string>& apiKey,
                      Build build, Convert onSuccess, KorvaneElements::Completion<Out> completion) {
    korvane::KorvaneAPI::setBasePath(KorvaneElements::basePath());
    std::shared_ptr<korvane::RequestBuilder<T>> builder = build();
    addElementHeaders(*builder, apiKey, traceId);
    builder->execute([endpoint, traceId, onSuccess = std::move(onSuccess),
                      completion = std::move(completion)](typename korvane::RequestBuilder<T>::Result result) {
        if (!result) {
            if (std::holds_alternative<anycodable::DecodingError>(result.error().error)) {
                // An answer that doesn't decode is not the vault's word: its bytes (card data,
                // perhaps) stay here.
                result.error().data.reset();
                if (result.error().response) result.error().response->body.clear();
            }
            const std::string error = korvane::describe(result.error().error);
            completion(std::nullopt, internal::failure(std::move(result.error())));
            internal::logApiFailure(endpoint, traceId, error);
            return;
        }
        auto converted = onSuccess(std::move(result->body));
        if constexpr (std::is_same_v<decltype(converted), std::expected<Out, anycodable::DecodingError>>) {
            if (!converted) {
                const std::string error = converted.error().description();
                completion(std::nullopt, internal::failure(std::move(converted.error())));
                internal::logApiFailure(endpoint, traceId, error);
                return;
            }
            completion(std::move(*converted), std::nullopt);
        } else {
            completion(std::move(converted), std::nullopt);
        }
        internal::logApiSuccess(endpoint, traceId);
    });
}

}  // namespace

std::string KorvaneElements::apiKey() {
    return readSetting(&Settings::apiKey);
}

void KorvaneElements::setApiKey(std::string apiKey) {
    writeSetting(&Settings::apiKey, std::move(apiKey));
}

std::string KorvaneElements::basePath() {
    return readSetting(&Settings::basePath);
}

void KorvaneElements::setBasePath(std::string basePath) {
    writeSetting(&Settings::basePath, std::move(basePath));
}

void KorvaneElements::setHttpSession(std::shared_ptr<platform::HttpSession> session) {
    writeSetting(&Settings::session, std::move(session));
}

std::shared_ptr<platform::HttpSession> internal::httpSession() {
    if (auto session = readSetting(&Settings::session)) return session;
    // The shared session lives until the process exits; the pointer owns nothing.
    return std::shared_ptr<platform::HttpSession>(std::shared_ptr<void>(), &platform::sharedHttpSession());
}

void KorvaneElements::tokenize(anycodable::Map body, std::optional<std::string> apiKey,
                               Completion<anycodable::AnyCodable> completion) {
    const std::string traceId = internal::newTraceId();
    internal::logApiRequestStart(kTokenizeEndpoint, traceId);
    if (!replaceElementReferences(body, kTokenizeEndpoint, traceId)) {
        completion(std::nullopt, internal::failure(TokenizingError::invalidInput));
        return;
    }
    executeVaultCall<anycodable::AnyCodable>(
        kTokenizeEndpoint, traceId, apiKey,
        [&] {
            return korvane::TokenizeAPI::tokenize.withRequestBuilder(
                anycodable::AnyCodable(anycodable::Value(std::move(body))));
        },
        [](anycodable::AnyCodable value) { return value; }, std::move(completion));
}

void KorvaneElements::createToken(CreateToken body, std::optional<std::string> apiKey,
                                  Completion<korvane::CreateTokenResponse> completion) {
    const std::string traceId = internal::newTraceId();
    internal::logApiRequestStart(kCreateTokenEndpoint, traceId);
    if (!replaceElementReferences(body.data, kCreateTokenEndpoint, traceId)) {
        completion(std::nullopt, internal::failure(TokenizingError::invalidInput));
        return;
    }
    korvane::CreateTokenRequest request{
        .id = std::move(body.id),
        .type = std::move(body.type),
        .data = anycodable::AnyCodable(anycodable::Value(std::move(body.data))),
        .encryption = std::move(body.encryption),
        .privacy = std::move(body.privacy),
        .metadata = std::move(body.metadata),
        .searchIndexes = std::move(body.searchIndexes),
        .fingerprintExpression = std::move(body.fingerprintExpression),
        .mask = body.mask ? std::optional<anycodable::AnyCodable>(anycodable::AnyCodable(*body.mask)) : std::nullopt,
        .deduplicateToken = body.deduplicateToken,
        .expiresAt = std::move(body.expiresAt),
        .containers = std::move(body.containers),
    };
    executeVaultCall<korvane::CreateTokenResponse>(
        kCreateTokenEndpoint, traceId, apiKey,
        [&] { return korvane::TokensAPI::create.withRequestBuilder(std::move(request)); },
        [](korvane::CreateTokenResponse response) { return response; }, std::move(completion));
}

void KorvaneElements::createSession(std::optional<std::string> apiKey,
                                    Completion<korvane::CreateSessionResponse> completion) {
    const std::string traceId = internal::newTraceId();
    internal::logApiRequestStart(kCreateSessionEndpoint, traceId);
    executeVaultCall<korvane::CreateSessionResponse>(
        kCreateSessionEndpoint, traceId, apiKey, [] { return korvane::SessionsAPI::create.withRequestBuilder(); },
        [](korvane::CreateSessionResponse response) { return response; }, std::move(completion));
}

void KorvaneElements::getTokenById(std::string id, std::optional<std::string> apiKey,
                                   Completion<GetTokenByIdResponse> completion) {
    const std::string traceId = internal::newTraceId();
    internal::logApiRequestStart(kGetTokenEndpoint, traceId);
    executeVaultCall<korvane::Token>(
        kGetTokenEndpoint, traceId, apiKey, [&] { return korvane::TokensAPI::getById.withRequestBuilder(id); },
        [](korvane::Token token) -> std::expected<GetTokenByIdResponse, anycodable::DecodingError> {
            if (!token.data || !token.data->value.is<anycodable::Map>()) {
                return std::unexpected(anycodable::DecodingError{anycodable::DecodingError::Kind::typeMismatch,
                                                                 {"data"},
                                                                 "Expected to decode Dictionary but found another "
                                                                 "kind instead."});
            }
            JSON tree = JSON::dictionary();
            internal::buildResponseTree(token.data->value, tree, &internal::makeOpaqueLeaf);
            return toGetTokenByIdResponse(token, std::move(tree));
        },
        std::move(completion));
}

GetTokenByIdResponse toGetTokenByIdResponse(const korvane::Token& token, std::optional<JSON> data) {
    return GetTokenByIdResponse{
        .id = token.id,
        .type = token.type,
        .tenantId = token.tenantId,
        .data = std::move(data),
        .metadata = token.metadata,
        .encryption = token.encryption,
        .createdBy = token.createdBy,
        .createdAt = token.createdAt,
        .modifiedBy = token.modifiedBy,
        .modifiedAt = token.modifiedAt,
        .fingerprint = token.fingerprint,
        .fingerprintExpression = token.fingerprintExpression,
        .mask = token.mask,
        .privacy = token.privacy,
        .searchIndexes = token.searchIndexes,
        .expiresAt = token.expiresAt,
        .containers = token.containers,
    };
}

}  // namespace korvane::elements
