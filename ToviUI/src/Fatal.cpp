#include "Fatal.hpp"

#include <cstdio>
#include <cstdlib>

namespace tovi::internal {

void fatalStop(std::string_view message) {
    std::fprintf(stderr, "%.*s\n", static_cast<int>(message.size()), message.data());
    std::fflush(stderr);
    std::abort();
}

}  // namespace tovi::internal
