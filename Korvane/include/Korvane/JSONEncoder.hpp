#pragma once
// JSONEncoder: writes any JSONCodable value (models, collections, AnyCodable) as JSON text.
//
// It stands where the phone's JSON encoder stands: output formatting and the date strategy
// are its configuration, and failures are values (EncodingError), never exceptions.
// Configure it before sharing it; encoding through a const encoder is thread-safe when the
// date strategy is.

#include <expected>
#include <functional>
#include <string>

#include "AnyCodable/JsonWriter.hpp"
#include "Korvane/JSONCodec.hpp"

namespace korvane {

class JSONEncoder {
public:
    enum class OutputFormatting { compact, prettyPrinted };

    OutputFormatting outputFormatting = OutputFormatting::compact;
    // How dates are written; empty: seconds since 2001-01-01T00:00:00Z as a number.
    std::function<std::string(Date)> dateEncodingStrategy;

    template <JSONCodable T>
    [[nodiscard]] std::expected<std::string, EncodingError> encode(const T& value) const {
        anycodable::JsonWriter writer(options());
        JSONCodec<T>::encode(writer, value);
        return std::move(writer).finish();
    }

    [[nodiscard]] anycodable::EncodingOptions options() const {
        return {outputFormatting == OutputFormatting::prettyPrinted, dateEncodingStrategy};
    }
};

}  // namespace korvane
