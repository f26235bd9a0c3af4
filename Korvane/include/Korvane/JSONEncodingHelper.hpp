#pragma once
// JSONEncodingHelper: a request body as builder parameters.
//
// The typed form encodes with CodableHelper::encode (pretty-printed); the untyped form writes
// a dynamic value the way the phone's JSON serialisation does (pretty-printed; the top level
// must be an array or an object, and only JSON kinds may appear inside). Either way the bytes
// are wrapped by JSONDataEncoding::encodingParameters. A value that can't be encoded does not
// fail the operation: the error's description goes to the console and the result is absent,
// so the request goes out without a body.
//
// Thread safety: as CodableHelper.

#include <optional>

#include "Korvane/CodableHelper.hpp"
#include "Korvane/JSONDataEncoding.hpp"
#include "platform/Console.hpp"

namespace korvane {

struct JSONEncodingHelper {
    template <JSONCodable T>
    [[nodiscard]] static std::optional<Parameters> encodingParameters(const std::optional<T>& object) {
        if (!object) return std::nullopt;
        return encodingParameters(*object);
    }

    template <JSONCodable T>
    [[nodiscard]] static std::optional<Parameters> encodingParameters(const T& object) {
        auto data = CodableHelper::encode(object);
        if (!data) {
            platform::consoleLine(data.error().localizedDescription());
            return std::nullopt;
        }
        return JSONDataEncoding::encodingParameters(*data);
    }

    // Untyped form. The empty value is absent.
    [[nodiscard]] static std::optional<Parameters> encodingParametersForObject(const anycodable::Value& object);
};

}  // namespace korvane
