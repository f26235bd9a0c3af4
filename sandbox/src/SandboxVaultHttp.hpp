#pragma once
// The sandbox vault's answers and proxy targets, apart from its routes.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "AnyCodable/Value.hpp"
#include "SandboxVaultTokens.hpp"
#include "platform/LoopbackServer.hpp"

namespace tovi::sandbox {

[[nodiscard]] platform::testing::LoopbackResponse jsonAnswer(int status, const anycodable::Value& body);

// {"title", "status"} and, when there are problems, "errors": each field with its messages.
[[nodiscard]] platform::testing::LoopbackResponse problemAnswer(int status, std::string title,
                                                                const std::vector<VaultProblem>& problems = {});

// A problem body for a refusal that no route made (400, 404, 413, 414, 503, ...).
[[nodiscard]] platform::testing::LoopbackResponse refusalAnswer(int status);

// Where a forward goes: the scheme, host, port and path of `proxyUrl`, then `subPath` (decoded,
// as path segments) and `rawQuery`. Absent unless the URL, as parsed back once built, is http
// on 127.0.0.1 or localhost at the port `proxyUrl` names.
[[nodiscard]] std::optional<std::string> proxyTarget(std::string_view proxyUrl, std::string_view subPath,
                                                     std::string_view rawQuery);

}  // namespace tovi::sandbox
