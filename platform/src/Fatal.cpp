#include "platform/Fatal.hpp"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace platform {

void fatalStop(std::string_view message) {
    // One write, so that lines from other threads cannot interleave with the message.
    std::string line(message);
    line.push_back('\n');
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::fflush(stderr);
    std::abort();
}

}  // namespace platform
