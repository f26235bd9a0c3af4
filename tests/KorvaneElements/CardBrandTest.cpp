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
        {"6011", "discover", {"discover", "maestro"}, false, "discover's 6011 and maestro's 6: the longer wins"},
    };
    for (const auto& c : cases) {
        auto r = CardBrand::getCardBrand(c.text);
        EXPECT_EQ(best(r), c.best) << c.text << ": " << c.why;
        EXPECT_EQ(r.maskSatisfied, c.maskSatisfied) << c.text << ": " << c.why;
        EXPECT_EQ(names(r.matchingCardBrands), c.matching) << c.text << ": " << c.why;
    }
    EXPECT_FALSE(CardBrand::getCardBrand(std::nullopt).bestMatchCardBrand);
}

TEST(CardBrandMasks, GapsAndCodeLengths) {
    struct Case {
        CardBrandDetails brand;
        const char* numberMask;
        std::size_t codeLength;
        const char* why;
    };
    const Case cases[] = {
        {CardBrand::AMERICAN_EXPRESS(), "0000 000000 00000", 4, "15 digits grouped 4, 6, 5"},
        {CardBrand::VISA(), "0000 0000 0000 0000000", 3, "the mask follows the last valid length, 19"},
        {CardBrandDetails("odd", {7}, CardBrand::cvcMask3(), {8, 4}, {10}), "00000000 00", 3,
         "gaps out of order are honoured only while ascending"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(applyMask(c.brand.cardNumberMaskInput, std::string(30, '0')), c.numberMask) << c.why;
        EXPECT_EQ(c.brand.cvcMaskInput.size(), c.codeLength) << c.why;
    }
    EXPECT_EQ(CardBrand::getCardBrand("34").bestMatchCardBrand->cvcMaskInput.size(), 4u);
    EXPECT_EQ(names(CardBrand::DefaultCardBrands()),
              (std::vector<std::string>{"visa", "mastercard", "americanExpress", "dinersClub", "discover", "jcb",
                                        "unionPay", "maestro", "elo", "mir", "hiper", "hipercard"}));
}

TEST(CardBrandCatalogue, AddCardBrandsReplacesTheWholeCatalogueAndLogsEach) {
    CatalogueGuard guard;
    elements_test::TelemetryCapture telemetry;
    CardBrandDetails acme(
        "acme", {std::int64_t{99}, std::string("skipped"), std::vector<std::int64_t>{1, 2, 3}, std::int64_t{-55}},
        CardBrand::cvcMask3(), {4}, {8});
    CardBrandDetails twice("twice", {std::int64_t{7}, std::vector<std::int64_t>{70, 79}, std::int64_t{99}},
                           CardBrand::cvcMask3(), {}, {4});
    CardBrand::addCardBrands({acme, twice});
    EXPECT_EQ(best(CardBrand::getCardBrand("4242")), "-") << "the built-in brands are gone";
    EXPECT_EQ(best(CardBrand::getCardBrand("9912")), "acme") << "on a tie the brand listed first";
    EXPECT_EQ(best(CardBrand::getCardBrand("1")), "-") << "a three-integer array is no range";
    EXPECT_EQ(best(CardBrand::getCardBrand("-5512")), "acme") << "a negative identifier's width counts its sign";
    const auto r = CardBrand::getCardBrand("7123");
    EXPECT_EQ(names(r.matchingCardBrands), (std::vector<std::string>{"twice", "twice"})) << "one per identifier";
    EXPECT_TRUE(r.maskSatisfied) << "computed again when the longer identifier became best";
    EXPECT_EQ(telemetry.bodies(),
              (std::vector<std::string>{R"({"message":"Added custom card brand acme","level":"info"})",
                                        R"({"message":"Added custom card brand twice","level":"info"})"}));

    CardBrand::addCardBrands({});
    EXPECT_TRUE(CardBrand::getCardBrand("7123").matchingCardBrands.empty()) << "the text asked last, asked again";
}

TEST(CardBrandDeathTest, EmptyValidLengthsStop) {
    EXPECT_DEATH(CardBrandDetails("none", {1}, CardBrand::cvcMask3(), {}, {}), "validLengths");
    EXPECT_DEATH(CardBrandDetails("zero", {1}, CardBrand::cvcMask3(), {}, {16, 0}), "validLengths");
}

}  // namespace
