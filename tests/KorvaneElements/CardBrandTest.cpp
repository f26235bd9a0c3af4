// The brand catalogue and detection.

#include <gtest/gtest.h>

#include "ElementTestSupport.hpp"
#include "KorvaneElements/CardBrand.hpp"

namespace {

using namespace korvane::elements;

// Restores the built-in catalogue after a test replaces it.
struct CatalogueGuard {
    ~CatalogueGuard() { CardBrand::addCardBrands(CardBrand::DefaultCardBrands()); }
};

std::vector<std::string> names(const std::vector<CardBrandDetails>& brands) {
    std::vector<std::string> result;
    for (const auto& b : brands) result.push_back(b.cardBrandName);
    return result;
}

std::string best(const CardBrandResults& r) {
    return r.bestMatchCardBrand ? r.bestMatchCardBrand->cardBrandName : "-";
}

TEST(CardBrandDetection, Cases) {
    elements_test::TelemetryCapture telemetry;
    struct Case {
        std::string text;
        std::string best;
        std::vector<std::string> matching;
        bool maskSatisfied;
        const char* why;
    };
    const Case cases[] = {
        {"4", "visa", {"visa"}, false, "one digit of a visa"},
        {"4242424242424242", "visa", {"visa"}, true, "16 is a visa length"},
        {"6", "maestro", {"maestro"}, false, "maestro's single identifier 6"},
        {"62", "maestro", {"maestro"}, false, "no longer identifier matches yet"},
        {"620", "unionPay", {"unionPay", "maestro"}, false, "three digits beat one"},
        {"5", "-", {}, false, "5 is below 51 and not 56-59"},
        {"504175", "elo", {"elo"}, false, "the gap between maestro's ranges"},
        {"36", "dinersClub", {"dinersClub"}, false, "a single prefix"},
        {"36000000000000", "dinersClub", {"dinersClub"}, true, "14 digits"},
        {"360000000000000", "dinersClub", {"dinersClub"}, false, "15 digits"},
        {"", "-", {}, false, "empty text"},
        {"٤٢٤٢", "-", {}, false, "other scripts' digits never match, and never stop"},
        {"4x", "visa", {"visa"}, false, "a prefix of the identifier's width decides"},
        {"x4", "-", {}, false, "a non-digit first character matches nothing"},
    };
    for (const auto& c : cases) {
        auto r = CardBrand::getCardBrand(c.text);
        EXPECT_EQ(best(r), c.best) << c.text << ": " << c.why;
        EXPECT_EQ(r.maskSatisfied, c.maskSatisfied) << c.text << ": " << c.why;
        EXPECT_EQ(names(r.matchingCardBrands), c.matching) << c.text << ": " << c.why;
    }
    EXPECT_FALSE(CardBrand::getCardBrand(std::nullopt).bestMatchCardBrand);
}

TEST(CardBrandDetection, EveryMatchingIdentifierAddsItsBrand) {
    // 6011 matches discover's 6011 and maestro's 6; the longer prefix wins.
    auto r = CardBrand::getCardBrand("6011");
    EXPECT_EQ(names(r.matchingCardBrands), (std::vector<std::string>{"discover", "maestro"}));
    EXPECT_EQ(best(r), "discover");
    // A brand whose two identifiers both match stands twice.
    CardBrandDetails twice("twice", {std::int64_t{7}, std::vector<std::int64_t>{70, 79}}, CardBrand::cvcMask3(), {},
                           {4});
    CardBrand::addCardBrands({twice});
    r = CardBrand::getCardBrand("7123");
    EXPECT_EQ(names(r.matchingCardBrands), (std::vector<std::string>{"twice", "twice"}));
    EXPECT_TRUE(r.maskSatisfied) << "computed again when the longer identifier became best";
    CardBrand::addCardBrands(CardBrand::DefaultCardBrands());
}

TEST(CardBrandMasks, GapsAndCodeLengths) {
    const auto& amex = CardBrand::AMERICAN_EXPRESS();
    // 15 digits grouped 4, 6, 5: spaces before digit positions 4 and 10.
    ASSERT_EQ(amex.cardNumberMaskInput.size(), 17u);
    EXPECT_EQ(std::get<std::string>(amex.cardNumberMaskInput[4]), " ");
    EXPECT_EQ(std::get<std::string>(amex.cardNumberMaskInput[11]), " ");
    EXPECT_EQ(amex.cvcMaskInput.size(), 4u);
    EXPECT_EQ(CardBrand::getCardBrand("34").bestMatchCardBrand->cvcMaskInput.size(), 4u);
    // A visa's mask follows its last valid length, 19: four groups of four and one of seven.
    EXPECT_EQ(CardBrand::VISA().cardNumberMaskInput.size(), 19u + 3u);
    EXPECT_EQ(CardBrand::DefaultCardBrands().size(), 12u);
    // Gaps out of order are honoured only while ascending.
    CardBrandDetails odd("odd", {7}, CardBrand::cvcMask3(), {8, 4}, {10});
    EXPECT_EQ(odd.cardNumberMaskInput.size(), 11u);
    EXPECT_EQ(std::get<std::string>(odd.cardNumberMaskInput[8]), " ");
}

TEST(CardBrandCatalogue, AddCardBrandsReplacesTheWholeCatalogueAndLogsEach) {
    CatalogueGuard guard;
    elements_test::TelemetryCapture telemetry;
    CardBrandDetails custom("acme", {std::int64_t{99}, std::string("skipped"), std::vector<std::int64_t>{1, 2, 3}},
                            CardBrand::cvcMask3(), {4}, {8});
    CardBrand::addCardBrands({custom});
    EXPECT_EQ(best(CardBrand::getCardBrand("4242")), "-") << "the built-in brands are gone";
    EXPECT_EQ(best(CardBrand::getCardBrand("9912")), "acme");
    EXPECT_EQ(best(CardBrand::getCardBrand("1")), "-") << "a three-integer array is no range";
    auto bodies = telemetry.bodies();
    ASSERT_EQ(bodies.size(), 1u);
    auto body = nlohmann::json::parse(bodies[0]);
    EXPECT_EQ(body["message"], "Added custom card brand acme");
    EXPECT_EQ(body["level"], "info");

    CardBrand::addCardBrands({});
    EXPECT_TRUE(CardBrand::getCardBrand("4").matchingCardBrands.empty());
}

TEST(CardBrandDeathTest, EmptyValidLengthsStop) {
    EXPECT_DEATH(CardBrandDetails("none", {1}, CardBrand::cvcMask3(), {}, {}), "validLengths");
    EXPECT_DEATH(CardBrandDetails("zero", {1}, CardBrand::cvcMask3(), {}, {16, 0}), "validLengths");
}

}  // namespace
