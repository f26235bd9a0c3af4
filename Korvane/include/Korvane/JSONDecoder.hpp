#pragma once
// JSONDecoder: reads JSON text into any JSONCodable value.
//
// Reading happens in two steps: the text becomes a dynamic Value (AnyCodable's reader: strict
// JSON, UTF-8 checked, depth-limited), then the value's codec walks it. Every failure --
// malformed text, a missing required key, a wrong type, a malformed UUID or date -- comes back
// as a DecodingError with the coding path of the offending value. Nothing throws.
//
// Configure before sharing; decoding through a const decoder is thread-safe when the date
// strategy is.

#include <expected>
#include <functional>
#include <optional>
#include <string_view>

#include "AnyCodable/JsonReader.hpp"
#include "Korvane/JSONCodec.hpp"

namespace korvane {

class JSONDecoder {
public:
    // How dates are read; empty: a number of seconds since 2001-01-01T00:00:00Z.
    std::function<std::optional<Date>(std::string_view)> dateDecodingStrategy = {};
    anycodable::ReadOptions readOptions;

    template <JSONCodable T>
    [[nodiscard]] std::expected<T, DecodingError> decode(std::string_view data) const {
        auto value = anycodable::readJson(data, readOptions);
        if (!value) return std::unexpected(std::move(value.error()));
        return decodeValue<T>(*value);
    }

    // Decodes from an already parsed value.
    template <JSONCodable T>
    [[nodiscard]] std::expected<T, DecodingError> decodeValue(const anycodable::Value& value) const {
        DecodeContext context;
        context.parseDate = dateDecodingStrategy;
        T result{};
        if (!JSONCodec<T>::decode(value, result, context)) return std::unexpected(context.takeError());
        return result;
    }
};

}  // namespace korvane
