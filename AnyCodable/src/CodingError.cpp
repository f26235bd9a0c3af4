#include "AnyCodable/CodingError.hpp"

namespace anycodable {

std::string codingPathText(const CodingPath& path) {
    std::string text;
    for (const auto& element : path) {
        if (!text.empty()) text += '.';
        text += element;
    }
    return text;
}

std::string DecodingError::localizedDescription() const {
    switch (kind) {
        case Kind::keyNotFound:
        case Kind::valueNotFound:
            return "The data couldn't be read because it is missing.";
        case Kind::typeMismatch:
        case Kind::dataCorrupted:
            break;
    }
    return "The data couldn't be read because it isn't in the correct format.";
}

std::string DecodingError::description() const {
    static constexpr const char* names[] = {"typeMismatch", "valueNotFound", "keyNotFound", "dataCorrupted"};
    std::string text = names[static_cast<int>(kind)];
    if (!codingPath.empty()) text += " at " + codingPathText(codingPath);
    return text + ": " + debugDescription;
}

std::string EncodingError::localizedDescription() const {
    return "The data couldn't be written because it isn't in the correct format.";
}

std::string EncodingError::description() const {
    std::string text = "invalidValue";
    if (!codingPath.empty()) text += " at " + codingPathText(codingPath);
    return text + ": " + debugDescription;
}

}  // namespace anycodable
