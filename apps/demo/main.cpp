// tovi_demo [--port N] [--session-ttl SECONDS]: the component live in a browser, on the embedded
// sandbox wallet and sandbox vault. Prints the address and serves until interrupted.
//
//   --port 0 picks a free port.

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "DemoServer.hpp"

namespace {

int usage() {
    std::fprintf(stderr, "usage: tovi_demo [--port N (default 8080, 0 = any free port)] [--session-ttl SECONDS]\n");
    return 2;
}

// A whole number within [low, high], or -1.
long parse(const char* text, long low, long high) {
    char* end = nullptr;
    const long value = std::strtol(text, &end, 10);
    if (end == text || *end != '\0' || value < low || value > high) return -1;
    return value;
}

}  // namespace

int main(int argc, char** argv) {
    tovi::demo::DemoOptions options;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--help" || arg == "-h") return usage() - 2;
        if (i + 1 >= argc) return usage();
        if (arg == "--port") {
            const long port = parse(argv[++i], 0, 65535);
            if (port < 0) return usage();
            options.port = static_cast<int>(port);
        } else if (arg == "--session-ttl") {
            const long seconds = parse(argv[++i], 1, 86'400);
            if (seconds < 0) return usage();
            options.sessionTtl = std::chrono::seconds(seconds);
        } else {
            return usage();
        }
    }
    // Stop signals are taken by sigwait below, on this thread, not by whichever thread they hit.
    sigset_t stops;
    sigemptyset(&stops);
    sigaddset(&stops, SIGINT);
    sigaddset(&stops, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &stops, nullptr);

    auto server = tovi::demo::DemoServer::start(options);
    if (!server) {
        std::fprintf(stderr, "tovi_demo: %s\n", server.error().c_str());
        return 1;
    }
    std::printf("Tovi demo: %s/\n", (*server)->url().c_str());
    std::fflush(stdout);
    int signal = 0;
    sigwait(&stops, &signal);
    std::printf("tovi_demo: stopping\n");
    return 0;
}
