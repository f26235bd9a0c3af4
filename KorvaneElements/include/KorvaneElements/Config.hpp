#pragma once
// Config: the options of a direct HTTP helper call. "Content-Type" chooses the body encoding
// ("application/json" or "application/x-www-form-urlencoded"); every header is sent.

#include <map>
#include <string>

namespace korvane::elements {

struct Config {
    std::map<std::string, std::string> headers{};
};

}  // namespace korvane::elements
