#include "Korvane/HTTPMethod.hpp"

#include <array>
#include <utility>

namespace korvane {
namespace {

constexpr std::array<std::pair<HTTPMethod, std::string_view>, 9> kMethods{{
    {HTTPMethod::options, "OPTIONS"},
    {HTTPMethod::get, "GET"},
    {HTTPMethod::head, "HEAD"},
    {HTTPMethod::post, "POST"},
    {HTTPMethod::put, "PUT"},
    {HTTPMethod::patch, "PATCH"},
    {HTTPMethod::delete_, "DELETE"},
    {HTTPMethod::trace, "TRACE"},
    {HTTPMethod::connect, "CONNECT"},
}};

}  // namespace

std::string_view rawValue(HTTPMethod method) {
    for (const auto& [item, raw] : kMethods) {
        if (item == method) return raw;
    }
    return {};
}

std::optional<HTTPMethod> httpMethodFromRawValue(std::string_view text) {
    for (const auto& [item, raw] : kMethods) {
        if (raw == text) return item;
    }
    return std::nullopt;
}

}  // namespace korvane
