#pragma once
// Round trips of vault models, table-driven: each case decodes a JSON text as the model and
// encodes it again, and the two must be the same JSON value with keys in the same order (so
// the full text of a case must list its keys in field order; the keys of a map field come
// back sorted, so write them sorted).
//
//     const ModelCase cases[] = {
//         modelCase<CreateApplicationRequest>("CreateApplicationRequest",
//             R"({"name":"n","type":"t","expires_at":"x"})",   // every field
//             R"({"name":"n","type":"t"})",                    // required fields only
//             {"name", "type"}),                               // required keys
//     };
//     for (const auto& c : cases) expectRoundTrips(c);
//
// `expectRoundTrips` checks: both texts come back unchanged; an unknown key is dropped; and
// for every required key, leaving it out or giving null is a decode error.

#include <gtest/gtest.h>

#include <expected>
#include <functional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include <nlohmann/json.hpp>

#include "Korvane/CodableHelper.hpp"

namespace korvane::testing {

struct ModelCase {
    std::string model;
    // Decodes then encodes; the error's description on failure.
    std::function<std::expected<std::string, std::string>(std::string_view)> roundTrip;
    std::string full;
    std::string minimal;
    std::vector<std::string> requiredKeys;
};

template <class T>
[[nodiscard]] ModelCase modelCase(std::string model, std::string full, std::string minimal = "{}",
                                  std::vector<std::string> requiredKeys = {}) {
    auto roundTrip = [](std::string_view json) -> std::expected<std::string, std::string> {
        auto value = CodableHelper::decode<T>(json);
        if (!value) return std::unexpected(value.error().description());
        auto text = CodableHelper::encode(*value);
        if (!text) return std::unexpected(text.error().description());
        return *text;
    };
    return {std::move(model), roundTrip, std::move(full), std::move(minimal), std::move(requiredKeys)};
}

// A case whose required keys are the keys of `minimal`, after checking that `full` names every
// field of the model: a field left out of it would escape the trip.
template <class T>
[[nodiscard]] ModelCase fullCase(std::string model, std::string full, std::string minimal = "{}") {
    EXPECT_EQ(nlohmann::ordered_json::parse(full).size(), std::tuple_size_v<decltype(T::jsonFields())>)
        << model << ": the full text leaves a field out";
    const auto required = nlohmann::ordered_json::parse(minimal);
    std::vector<std::string> requiredKeys;
    for (const auto& [key, value] : required.items()) requiredKeys.push_back(key);
    return modelCase<T>(std::move(model), std::move(full), std::move(minimal), std::move(requiredKeys));
}

inline void expectSameJson(const ModelCase& c, const std::string& input, const char* what) {
    SCOPED_TRACE(what);
    const auto expected = nlohmann::ordered_json::parse(input);
    auto output = c.roundTrip(input);
    ASSERT_TRUE(output) << output.error();
    EXPECT_EQ(nlohmann::ordered_json::parse(*output), expected) << "encoded:\n" << *output;
}

inline void expectRoundTrips(const ModelCase& c) {
    SCOPED_TRACE(c.model);
    expectSameJson(c, c.full, "all fields");
    expectSameJson(c, c.minimal, "required fields only");

    auto withUnknown = nlohmann::ordered_json::parse(c.minimal);
    withUnknown["not_a_field"] = {1, 2};
    auto output = c.roundTrip(withUnknown.dump());
    ASSERT_TRUE(output) << "unknown key: " << output.error();
    EXPECT_EQ(nlohmann::ordered_json::parse(*output), nlohmann::ordered_json::parse(c.minimal)) << "unknown key kept";

    for (const std::string& key : c.requiredKeys) {
        auto missing = nlohmann::ordered_json::parse(c.full);
        missing.erase(key);
        EXPECT_FALSE(c.roundTrip(missing.dump())) << "decoded without \"" << key << "\"";
        auto null = nlohmann::ordered_json::parse(c.full);
        null[key] = nullptr;
        EXPECT_FALSE(c.roundTrip(null.dump())) << "decoded with \"" << key << "\" null";
    }
}

}  // namespace korvane::testing
