#include "SandboxCards.hpp"

#include <algorithm>
#include <array>

namespace tovi::sandbox::internal {

namespace {

struct PrefixRange {
    std::string_view low;   // inclusive, compared on the first low.size() digits
    std::string_view high;  // inclusive, same length as low
    std::string_view brand;
};

// First match wins, so the narrower ranges stand before the wider ones they overlap.
constexpr std::array<PrefixRange, 19> kPrefixes{{
    {"34", "34", "amex"},
    {"37", "37", "amex"},
    {"4026", "4026", "visa electron"},
    {"417500", "417500", "visa electron"},
    {"4508", "4508", "visa electron"},
    {"4844", "4844", "visa electron"},
    {"4913", "4913", "visa electron"},
    {"4917", "4917", "visa electron"},
    {"4", "4", "visa"},
    {"51", "55", "mastercard"},
    {"2221", "2720", "mastercard"},
    {"5018", "5018", "maestro"},
    {"5020", "5020", "maestro"},
    {"5038", "5038", "maestro"},
    {"6304", "6304", "maestro"},
    {"6011", "6011", "discover"},
    {"644", "659", "discover"},
    {"300", "305", "diners"},
    {"36", "36", "diners"},
}};

bool isDigits(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

std::string brandForPrefix(std::string_view digits) {
    for (const auto& range : kPrefixes) {
        if (digits.size() < range.low.size()) continue;
        const auto head = digits.substr(0, range.low.size());
        if (head >= range.low && head <= range.high) return std::string(range.brand);
    }
    return "unknown";
}

std::optional<ToviSharedCard> cardFromMaskedNumber(std::string_view masked) {
    std::string compact;
    for (char c : masked) {
        if (c != ' ' && c != '-') compact.push_back(c);
    }
    if (compact.size() < 10) return std::nullopt;
    const auto firstSix = std::string_view(compact).substr(0, 6);
    const auto lastFour = std::string_view(compact).substr(compact.size() - 4);
    if (!isDigits(firstSix) || !isDigits(lastFour)) return std::nullopt;
    return ToviSharedCard{brandForPrefix(firstSix), std::string(firstSix), std::string(lastFour)};
}

ToviSharedCard madeUpCard(std::string_view tokenId) {
    std::string digits;
    for (char c : tokenId) {
        if (c >= '0' && c <= '9') digits.push_back(c);
    }
    const std::string lastFour = digits.size() >= 4 ? digits.substr(digits.size() - 4) : "4242";
    return ToviSharedCard{"visa", "424242", lastFour};
}

}  // namespace tovi::sandbox::internal
