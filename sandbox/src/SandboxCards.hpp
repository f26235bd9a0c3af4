#pragma once
// Cards as the sandbox records them.

#include <optional>
#include <string>
#include <string_view>

#include "ToviUI/ToviSharedRecords.hpp"

namespace tovi::sandbox::internal {

// The backend's brand name for a card number prefix ("visa", "mastercard", ...; "unknown").
[[nodiscard]] std::string brandForPrefix(std::string_view digits);

// Brand, first six and last four from a masked number such as "424242XXXXXX4242" (spaces and
// dashes allowed). Absent when either end does not hold digits.
[[nodiscard]] std::optional<ToviSharedCard> cardFromMaskedNumber(std::string_view masked);

// A plausible card for a token when no vault is at hand: a test Visa ending in the token's
// last four digits, or in 4242.
[[nodiscard]] ToviSharedCard madeUpCard(std::string_view tokenId);

}  // namespace tovi::sandbox::internal
