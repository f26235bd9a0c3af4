#pragma once
// The raw result of the last successful load of the wallet screen.

#include <optional>
#include <string>

#include "ToviUI/ToviSharedRecords.hpp"

namespace tovi {

enum class BalanceScreenUiState { loading, loaded, error };

struct BalanceScreenState {
    ToviSharedCustomer customer;
    ToviSharedMerchant merchant;
    ToviSharedUserReloadConfiguration customerReloadConfig;
    ToviSharedTransactionResult transactions;
    std::optional<std::string> cardArtUrl;  // first card art url; absent for none
    std::string korvaneApiKey;

    friend bool operator==(const BalanceScreenState&, const BalanceScreenState&) = default;
};

}  // namespace tovi
