#pragma once
// KvDatadogLogger: the element library's one structured logger. Each `log` call posts one JSON
// object to the log intake, fire and forget; the answer is never looked at.
//
// The attribute map collects the attributes of the next message and is emptied after each
// post, so the device and application attributes set at build time reach only the first
// message. Card values must never be passed as attributes: only element ids, flags, the brand,
// bin and last four, endpoint labels and trace ids.
//
// Usage:
//   korvane::elements::logger().log("CardNumberUITextField init", "info", std::nullopt,
//                                    anycodable::Map{{"elementId", id}});
//
// Thread safety: `log`, `send` and the attribute calls may come from any thread (API
// completions log from their own queue); the map is guarded, and posting never blocks on the
// network.

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "AnyCodable/Value.hpp"

namespace korvane::elements {

class KvDatadogLogger {
public:
    // `logURL` is the intake URL with the path "/v1/input/"; the token is appended per post.
    KvDatadogLogger(std::string clientToken, std::string logURL);
    KvDatadogLogger(const KvDatadogLogger&) = delete;
    KvDatadogLogger& operator=(const KvDatadogLogger&) = delete;

    // Merges `attributes` into the map (a key already there keeps its place and takes the new
    // value), stores the text under "message" (with ": " and `error` appended only at level
    // "error") and `level` under "level", posts, and empties the map.
    void log(std::string_view message, std::string_view level, std::optional<std::string_view> error = std::nullopt,
             const anycodable::Map& attributes = {});

    // Posts the current map as it is. A map that cannot be written as JSON (a non-finite
    // number, text that is not UTF-8, a value with no JSON form) is dropped silently. Does not
    // empty the map.
    void send();

    // Direct access to the next message's attributes, for callers that compose a message by
    // hand (the card brand catalogue does).
    void setAttribute(std::string key, anycodable::Value value);
    void clearAttributes();
    [[nodiscard]] anycodable::Map attrMap() const;

    [[nodiscard]] const std::string& clientToken() const { return clientToken_; }
    [[nodiscard]] std::string logURL() const;
    void setLogURL(std::string url);

private:
    void sendLocked();

    mutable std::mutex mutex_;
    anycodable::Map attrMap_;
    std::string clientToken_;
    std::string logURL_;
};

class KVDatadogLoggerBuilder {
public:
    KVDatadogLoggerBuilder& setClientToken(std::optional<std::string> token);
    KVDatadogLoggerBuilder& addAttribute(std::string key, std::string value);

    // REQUIRES: a client token was set; without one the process stops.
    // The logger's URL is the current intake origin with "/v1/input/"; the builder's attributes
    // move into the logger's map (for its first message) and the builder's map is emptied.
    [[nodiscard]] std::unique_ptr<KvDatadogLogger> build();

    [[nodiscard]] const std::optional<std::string>& clientToken() const { return clientToken_; }
    [[nodiscard]] const std::map<std::string, std::string>& attributes() const { return attributes_; }

private:
    std::optional<std::string> clientToken_;
    std::map<std::string, std::string> attributes_;
};

// The builder of the shared logger, filled with the library's token and the device and
// application attributes read from `platform::deviceInfo()` now.
[[nodiscard]] KVDatadogLoggerBuilder makeDefaultLoggerBuilder();

// The shared logger, built once on first use.
[[nodiscard]] KvDatadogLogger& logger();

}  // namespace korvane::elements
