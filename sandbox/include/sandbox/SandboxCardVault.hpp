#pragma once
// What the sandbox needs of a card vault: the masked number behind a token id.

#include <functional>
#include <optional>
#include <string>

namespace tovi::sandbox {

// Thread safety: implementations accept calls from any thread and may complete on any thread.
class SandboxCardVault {
public:
    virtual ~SandboxCardVault() = default;

    // Completes once with the masked card number of the token (digits at both ends, any mask
    // characters between, e.g. "424242XXXXXX4242"), or absent when the vault has no such token.
    virtual void readMaskedNumber(std::string tokenId,
                                  std::move_only_function<void(std::optional<std::string>)> completion) = 0;
};

}  // namespace tovi::sandbox
