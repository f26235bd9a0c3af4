// tovi_scenario: drives a live screen from JSON lines on standard input and answers with JSON
// lines on standard output (the protocol is in README.md beside this file).
//
//     echo '{"cmd":"start","screen":"walletStates"}' | tovi_scenario

#include <cstdio>
#include <iostream>
#include <string>

#include "ScenarioRunner.hpp"

int main(int argc, char** argv) {
    if (argc > 1) {
        std::fprintf(stderr, "usage: tovi_scenario < input.jsonl\n");
        return std::string(argv[1]) == "--help" ? 0 : 2;
    }
    std::ios::sync_with_stdio(false);
    tovi::scenario::ScenarioRunner runner;
    std::string line;
    while (std::getline(std::cin, line)) {
        if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
        for (const std::string& out : runner.handle(line)) std::cout << out << '\n';
        std::cout.flush();
    }
    return 0;
}
