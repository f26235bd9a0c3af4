// Text as a URL, the way a configured base path, a redirect target or a link in a server's
// answer reaches the client; and as a component to escape and unescape. A URL that parses
// writes a text that parses back to the same URL, and every escape of UTF-8 text decodes to
// what it escaped (bytes that are not UTF-8 decode to nothing, as on the phone).

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Text.hpp"
#include "platform/Url.hpp"

namespace {

constexpr platform::UrlCharacterSet kSets[] = {
    platform::UrlCharacterSet::user,     platform::UrlCharacterSet::password, platform::UrlCharacterSet::host,
    platform::UrlCharacterSet::path,     platform::UrlCharacterSet::query,    platform::UrlCharacterSet::queryItem,
    platform::UrlCharacterSet::fragment,
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);

    const bool utf8 = platform::utf16ToUtf8(platform::utf8ToUtf16(text)) == text;
    for (auto set : kSets) {
        const auto decoded = platform::percentDecode(platform::percentEncode(text, set));
        if (decoded != (utf8 ? std::optional<std::string>(text) : std::nullopt)) std::abort();
    }
    (void)platform::percentDecode(text);

    auto url = platform::Url::parse(text);
    if (!url) return 0;
    (void)url->path();
    (void)url->lastPathComponent();
    (void)url->pathExtension();
    auto again = platform::Url::parse(url->string());
    if (!again || !(*again == *url)) std::abort();  // what we write, we read

    // Items set from a parsed query come back as set.
    if (auto items = url->queryItems()) {
        url->setQueryItems(items);
        auto rebuilt = platform::Url::parse(url->string());
        if (!rebuilt || rebuilt->queryItems() != items) std::abort();
    }
    return 0;
}
