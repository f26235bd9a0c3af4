#pragma once
// ScenarioRunner: drives one live screen from JSON lines, for tovi_scenario (see README.md
// beside this file for the protocol).
//
// Each input line gives back the output lines it caused: first the console lines written
// meanwhile ({"event":"console",...}), then one result line. After every command the main
// queue runs until nothing is due, as a phone's run loop would before the next touch; time
// moves only when a command says so ("advance"), so a scenario gives the same output on
// every run.
//
// Thread safety: one thread; the runner installs a manual main queue and clock for its life.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tovi::scenario {

class ScenarioRunner {
public:
    ScenarioRunner();
    ~ScenarioRunner();
    ScenarioRunner(const ScenarioRunner&) = delete;
    ScenarioRunner& operator=(const ScenarioRunner&) = delete;

    // The output lines of one input line, without newlines. Never throws: malformed input and
    // failed actions give an error line, and the runner goes on.
    [[nodiscard]] std::vector<std::string> handle(std::string_view line);

    class Impl;

private:
    std::unique_ptr<Impl> impl_;
};

}  // namespace tovi::scenario
