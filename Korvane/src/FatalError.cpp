#include "Korvane/FatalError.hpp"

#include <string>

#include "platform/Fatal.hpp"

namespace korvane {

void fatalError(std::string_view message, std::string_view source) {
    std::string line;
    line.append(source).append(": Fatal error: ").append(message);
    platform::fatalStop(line);
}

}  // namespace korvane
