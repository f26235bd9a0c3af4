// libFuzzer entry point: arbitrary bytes as a JSON document, read into AnyCodable, written
// back, and decoded into a model that uses every kind of field. Any crash, sanitizer report
// or escaped exception is a finding; decode and encode failures are expected values.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "AnyCodable/AnyCodable.hpp"
#include "Korvane/CodableHelper.hpp"
#include "Korvane/JSONDecoder.hpp"
#include "Korvane/JSONEncoder.hpp"

namespace {

struct Inner {
    std::string key;
    std::optional<std::int32_t> size;
    static constexpr auto jsonFields() {
        return korvane::fields(korvane::required("key", &Inner::key), korvane::optional("size", &Inner::size));
    }
};

struct Sample {
    std::optional<std::string> id;
    std::optional<platform::Uuid> tenantId;
    std::optional<anycodable::AnyCodable> data;
    std::optional<std::map<std::string, std::string>> metadata;
    std::optional<std::vector<Inner>> items;
    std::optional<double> amount;
    std::optional<bool> flag;
    std::optional<std::uint8_t> small;
    korvane::AdditionalProperties extra;
    static constexpr auto jsonFields() {
        return korvane::fields(korvane::optional("id", &Sample::id), korvane::optional("tenant_id", &Sample::tenantId),
                               korvane::optional("data", &Sample::data),
                               korvane::optional("metadata", &Sample::metadata),
                               korvane::optional("items", &Sample::items), korvane::optional("amount", &Sample::amount),
                               korvane::optional("flag", &Sample::flag), korvane::optional("small", &Sample::small),
                               korvane::additionalProperties(&Sample::extra));
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view text(reinterpret_cast<const char*>(data), size);

    if (auto any = anycodable::AnyCodable::fromJson(text)) {
        (void)any->toJson({.prettyPrinted = true});
        (void)any->description();
        (void)std::hash<anycodable::AnyCodable>{}(*any);
        if (!(*any == *any) && !any->value.isEmpty()) {
            // Reflexive for every kind JSON can produce (null included for AnyCodable).
            __builtin_trap();
        }
    }

    // Short inputs are also tried as dates: the read has a hand-written shortcut in front of ICU.
    if (size < 64) {
        auto formatter = korvane::CodableHelper::dateFormatter();
        if (auto date = formatter->date(text)) {
            if (!formatter->date(formatter->string(*date))) __builtin_trap();  // what we write, we read
        }
    }

    korvane::JSONDecoder decoder;
    if (auto sample = decoder.decode<Sample>(text)) {
        korvane::JSONEncoder encoder;
        auto written = encoder.encode(*sample);
        if (written && !decoder.decode<Sample>(*written)) __builtin_trap();  // what we write, we read
    }
    return 0;
}
