#include "Korvane/FatalError.hpp"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace korvane {

void fatalError(std::string_view message, std::string_view source) {
    std::string line;
    line.append(source).append(": Fatal error: ").append(message).append("\n");
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::fflush(stderr);
    std::abort();
}

}  // namespace korvane
