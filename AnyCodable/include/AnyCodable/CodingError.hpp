#pragma once
// Errors of reading and writing JSON. They are values: nothing in AnyCodable or in the
// model coders throws or stops the process on bad input.

#include <string>
#include <vector>

namespace anycodable {

// Path from the document root to the failing value: object keys, and "Index N" for array
// positions, as the phone's coders print them.
using CodingPath = std::vector<std::string>;

[[nodiscard]] std::string codingPathText(const CodingPath& path);  // "data.Index 2.id"

struct DecodingError {
    enum class Kind { typeMismatch, valueNotFound, keyNotFound, dataCorrupted };

    Kind kind = Kind::dataCorrupted;
    CodingPath codingPath;
    std::string debugDescription;

    // "The data couldn't be read because ..." as the phone words it per kind.
    [[nodiscard]] std::string localizedDescription() const;
    // The kind, the path and the debug description on one line, for logs.
    [[nodiscard]] std::string description() const;

    friend bool operator==(const DecodingError&, const DecodingError&) = default;
};

struct EncodingError {
    CodingPath codingPath;
    std::string debugDescription;

    [[nodiscard]] std::string localizedDescription() const;
    [[nodiscard]] std::string description() const;

    friend bool operator==(const EncodingError&, const EncodingError&) = default;
};

}  // namespace anycodable
