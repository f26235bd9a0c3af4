// The response tree's accessors: what reads answer for each case, and how writes change a
// container in place.

#include <gtest/gtest.h>

#include "KorvaneElements/JSON.hpp"

namespace {

using korvane::elements::ElementValueReference;
using korvane::elements::ElementValueType;
using korvane::elements::JSON;

TEST(JSONTree, ReadsAnswerOnlyForTheirOwnCase) {
    auto ref = std::make_shared<ElementValueReference>(
        "id", [] { return "v"; }, true, ElementValueType::string);
    JSON tree =
        JSON::dictionary({{"list", JSON::array({JSON::raw(1), std::nullopt})}, {"hidden", JSON::reference(ref)}});

    EXPECT_FALSE(tree["missing"]);
    EXPECT_FALSE(tree[0]) << "an index into a dictionary";
    const auto list = tree["list"];
    ASSERT_TRUE(list);
    EXPECT_FALSE((*list)["key"]) << "a key into an array";
    EXPECT_TRUE((*list)[0]);
    EXPECT_FALSE((*list)[1]) << "an absent element";
    EXPECT_FALSE((*list)[2]) << "at the end";
    EXPECT_FALSE(list->rawValue());
    EXPECT_EQ(list->elementValueReference(), nullptr);

    const auto hidden = tree["hidden"];
    EXPECT_EQ(hidden->kind(), JSON::Case::elementValueReference);
    EXPECT_EQ(hidden->elementValueReference(), ref);
    EXPECT_FALSE(hidden->rawValue());
    EXPECT_FALSE((*hidden)["x"]);
}

TEST(JSONTree, WritesChangeContainersInPlaceAndLeavesNot) {
    JSON tree;
    tree.set("a", JSON::raw("x"));
    tree.set("a", JSON::raw("y"));
    EXPECT_EQ(*tree["a"]->rawValue()->get<std::string>(), "y");
    tree.set("a", std::nullopt);
    EXPECT_TRUE(tree.dictionaryValue()->empty());

    JSON list = JSON::array();
    list.set(2, JSON::raw(3));
    ASSERT_EQ(list.arrayValue()->size(), 3u) << "extended with absent elements";
    EXPECT_FALSE(list[0]);
    list.set(0, JSON::raw(1));
    list.append(JSON::raw(4));
    EXPECT_EQ(*list[0]->rawValue()->get<std::int64_t>(), 1);
    EXPECT_EQ(*list[3]->rawValue()->get<std::int64_t>(), 4);

    JSON leaf = JSON::raw(1);
    leaf.set("k", JSON::raw(2));
    leaf.set(0, JSON::raw(2));
    EXPECT_EQ(leaf.kind(), JSON::Case::rawValue);
}

TEST(JSONTreeDeathTest, ANegativeIndexStops) {
    JSON list = JSON::array({JSON::raw(1)});
    EXPECT_DEATH((void)list[-1], "Negative index");
}

}  // namespace
