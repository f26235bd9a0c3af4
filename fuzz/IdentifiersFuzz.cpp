// Text as the identifiers and binary fields of a server's answer: a UUID (tenant and creator
// ids) and base64 (data fields). What parses writes back to a text that parses to the same
// value, and any bytes survive a base64 round trip.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "platform/Base64.hpp"
#include "platform/Uuid.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);

    if (auto uuid = platform::Uuid::parse(text)) {
        auto again = platform::Uuid::parse(uuid->string());
        if (!again || !(*again == *uuid)) std::abort();
    }
    if (auto bytes = platform::base64Decode(text)) {
        if (platform::base64Decode(platform::base64Encode(*bytes)) != bytes) std::abort();
    }
    if (platform::base64Decode(platform::base64Encode(text)) != text) std::abort();
    return 0;
}
