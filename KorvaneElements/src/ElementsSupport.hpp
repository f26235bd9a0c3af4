#pragma once
// What the static calls of KorvaneElements share: trace ids, the telemetry lines of an API
// call, the transport of the proxy and HTTP helpers, and the response tree.

#include <expected>
#include <memory>
#include <string>
#include <string_view>

#include "AnyCodable/CodingError.hpp"
#include "AnyCodable/Value.hpp"
#include "KorvaneElements/ElementsError.hpp"
#include "KorvaneElements/JSON.hpp"

namespace platform {
class HttpSession;
}

namespace korvane::elements::internal {

// An error for a completion, built in place out of line: a temporary variant moved into an
// optional trips g++ 12's uninitialised-use analysis under the sanitizers.
[[nodiscard]] std::optional<ElementsError> failure(TokenizingError error);
[[nodiscard]] std::optional<ElementsError> failure(ProxyError error);
[[nodiscard]] std::optional<ElementsError> failure(HttpClientError error);
[[nodiscard]] std::optional<ElementsError> failure(korvane::ErrorResponse error);
[[nodiscard]] std::optional<ElementsError> failure(anycodable::DecodingError error);

// A new random UUID in its upper-case text form.
[[nodiscard]] std::string newTraceId();

// "endpoint" and "KV-TRACE-ID" as an attribute object, plus whatever `extra` holds.
[[nodiscard]] anycodable::Map callAttributes(std::string_view endpoint, std::string_view traceId,
                                             anycodable::Map extra = {});

void logApiRequestStart(std::string_view endpoint, std::string_view traceId, anycodable::Map extra = {});
// "apiSuccess" true, at level "info".
void logApiSuccess(std::string_view endpoint, std::string_view traceId,
                   std::string_view message = "Successful API response");
// "Unsuccessful API response" with the error, "apiSuccess" false, at level "error".
void logApiFailure(std::string_view endpoint, std::string_view traceId, std::string_view error);

// The installed transport, or the platform's shared session. Any thread.
[[nodiscard]] std::shared_ptr<platform::HttpSession> httpSession();

using LeafMaker = JSON (*)(const anycodable::Value&);
[[nodiscard]] JSON makeRawLeaf(const anycodable::Value& value);
// A reference with a new random id, complete, of value type `string`, whose value is the
// textual description of `value`.
[[nodiscard]] JSON makeOpaqueLeaf(const anycodable::Value& value);

// Writes `value` (a map or an array) into `node`: maps and arrays become containers, anything
// else a leaf made by `leaf`.
void buildResponseTree(const anycodable::Value& value, JSON& node, LeafMaker leaf);

// A response body read as the tree's source: a JSON object. A body that is no JSON, or whose
// top level is a scalar, is a decoding error; one whose top level is an array stops the
// process, as the tree of a response starts from an object.
[[nodiscard]] std::expected<anycodable::Value, anycodable::DecodingError> parseResponseObject(std::string_view body);

}  // namespace korvane::elements::internal
