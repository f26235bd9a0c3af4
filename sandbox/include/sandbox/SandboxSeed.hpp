#pragma once
// The wallet a sandbox starts from.

#include <string>
#include <vector>

#include "ToviUI/ToviSharedRecords.hpp"

namespace tovi::sandbox {

struct SandboxSeed {
    std::string customerId;
    std::string merchantId;
    std::string cardHolderName;  // printed on virtual cards
    ToviSharedCustomer customer;
    ToviSharedMerchant merchant;
    ToviSharedUserReloadConfiguration userReloadConfiguration;
    std::vector<ToviSharedTransaction> transactions;  // newest first
    std::vector<std::string> cardArtUrls;
    std::string korvaneApiKey;

    // A coffee shop with four presets (three with a bonus), custom amounts from $10.00 to
    // $250.00, and a customer with $42.75, two saved cards and a page of history.
    [[nodiscard]] static SandboxSeed standard();
};

}  // namespace tovi::sandbox
