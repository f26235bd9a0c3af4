// Text as a date from outside: every date field of a vault answer goes through the vault's
// lenient three-step read, and a wallet transaction's creation time through the wallet's own
// parser and printer. What the vault's formatter reads and writes back, it reads again to the
// same instant; nothing a server sends may stop the process.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "Korvane/OpenISO8601DateFormatter.hpp"
#include "ToviUI/TransactionUiModel.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);

    static const korvane::OpenISO8601DateFormatter vault;
    if (auto date = vault.date(text)) {
        const std::string written = vault.string(*date);
        auto again = vault.date(written);
        if (!again || vault.string(*again) != written) std::abort();
    }
    (void)tovi::transactionDateText(text);
    return 0;
}
